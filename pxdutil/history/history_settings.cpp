// The table of history settings and what follows from it.
#include <pxdutil/history/history_settings.h>

#include <algorithm>
#include <array>
#include <utility>

#include <pxdutil/history/detail/catalogue.h>

using pxd::detail::Catalogue;
using pxd::detail::CatalogueEntryOf;

PXDUTIL_DEFINE_RUNTIME_CLASS(CHistorySettings, CObject, kNoSchema, &CHistorySettings::CreateObject)
PXDUTIL_DEFINE_RUNTIME_CLASS(CHistorySettingsTemplate, CObject, kNoSchema,
                             &CHistorySettingsTemplate::CreateObject)

namespace {

using Line = ZRGS_FIELD_HISTORY_SETTINGS;
using LineSpan = std::span<const Line>;

constexpr int kMaxLines = 30;
static_assert(sizeof(ZRGS_HISTORY_SETTINGS::settings) == kMaxLines * sizeof(Line));

// The count stands above the host's bits.
constexpr int kCountShift = 3;
constexpr std::uint8_t kHostBits = 0x07;

constexpr unsigned short kBid = 200;
constexpr unsigned short kTrade = 201;
constexpr unsigned short kAsk = 202;

constexpr ZRGS_RESOLUTION kOneTick = {1, 1};
constexpr ZRGS_RESOLUTION kOneMinute = {3, 1};
constexpr ZRGS_RESOLUTION kOneDay = {4, 1};

constexpr Line kTradeDays = {{kTrade, kOneDay}, 50000};
constexpr Line kTradeMinutes = {{kTrade, kOneMinute}, 1000};
constexpr Line kTradeTicks = {{kTrade, kOneTick}, 15};
constexpr Line kBidDays = {{kBid, kOneDay}, 50000};
constexpr Line kBidMinutes = {{kBid, kOneMinute}, 1000};
constexpr Line kAskDays = {{kAsk, kOneDay}, 50000};
constexpr Line kAskMinutes = {{kAsk, kOneMinute}, 1000};

constexpr Line kTicksAndMinutes[] = {kTradeDays, kTradeMinutes, kTradeTicks, kBidMinutes,
                                     kAskMinutes};
constexpr Line kDaysAndMinutes[] = {kTradeDays, kTradeMinutes, kBidMinutes,
                                    kBidDays,   kAskMinutes,   kAskDays};
constexpr Line kTradesAlone[] = {kTradeDays, kTradeMinutes, kTradeTicks};
constexpr Line kTradeDaysAlone[] = {kTradeDays};

// By kind of symbol.
constexpr std::array<LineSpan, 9> kDefaults = {
    kTicksAndMinutes, kDaysAndMinutes, kTicksAndMinutes, kDaysAndMinutes, kTradesAlone,
    LineSpan(),       kTradeDaysAlone, kTradeDaysAlone,  kDaysAndMinutes,
};

void RequireLine(int index) {
  if (index < 0 || index >= kMaxLines) {
    pxd::Fault("a line was asked for that a table of history settings doesn't have");
  }
}

void AppendMissing(CZRListEx<CField>& to, const CZRListEx<CField>& from) {
  for (const CField& field : from) {
    if (to.Find(field) == nullptr) {
      to.AddTail(field);
    }
  }
}

}  // namespace

CObject* CHistorySettings::CreateObject() {
  return new CHistorySettings;
}

CHistorySettings::CHistorySettings(const ZRGS_HISTORY_SETTINGS& table) : m_HS(table) {
  SetFieldLists();
}

// The lists aren't copied: the other's may be older than its table, or than the catalogue.
CHistorySettings::CHistorySettings(const CHistorySettings& other)
    : CObject(other), m_HS(other.m_HS) {
  SetFieldLists();
}

CHistorySettings& CHistorySettings::operator=(const CHistorySettings& other) {
  ChangeTable([&] { m_HS = other.m_HS; });
  return *this;
}

// A table never stands beside the lists of another one: where they can't be worked out, the change
// is taken back.
template <class Change>
void CHistorySettings::ChangeTable(Change change) {
  const ZRGS_HISTORY_SETTINGS before = m_HS;
  change();
  try {
    SetFieldLists();
  } catch (...) {
    m_HS = before;
    throw;
  }
}

void CHistorySettings::SetTable(const ZRGS_HISTORY_SETTINGS& table) {
  ChangeTable([&] { m_HS = table; });
}

int CHistorySettings::GetCount() const {
  return std::min(m_HS.bCount >> kCountShift, kMaxLines);
}

void CHistorySettings::SetCount(int count) {
  m_HS.bCount = static_cast<std::uint8_t>(count << kCountShift | (m_HS.bCount & kHostBits));
}

LineSpan CHistorySettings::Lines() const {
  return {m_HS.settings, static_cast<std::size_t>(GetCount())};
}

CFieldHistorySetting CHistorySettings::GetSetting(int index) const {
  RequireLine(index);
  return {m_HS.settings[index]};
}

ZRGS_FIELD_HISTORY_SETTINGS* CHistorySettings::GetFHSetting(int index) {
  RequireLine(index);
  return &m_HS.settings[index];
}

int CHistorySettings::GetSettingIdx(const CFieldResoln& pair) const {
  const auto lines = Lines();
  const auto at = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
    return CFieldResoln(line.fieldResolution) == pair;
  });
  return at != lines.end() ? static_cast<int>(at - lines.begin()) : -1;
}

int CHistorySettings::HasSetting(const CFieldHistorySetting& setting) const {
  return GetSettingIdx(setting.GetFieldResoln());
}

int CHistorySettings::HasFieldResolutionSetting(const CFieldHistorySetting& setting) const {
  return GetSettingIdx(setting.GetFieldResoln());
}

bool CHistorySettings::HasSameLines(const CHistorySettings& other) const {
  const auto mine = Lines();
  const auto others = other.Lines();
  return std::equal(mine.begin(), mine.end(), others.begin(), others.end(),
                    [](const Line& a, const Line& b) {
                      return CFieldHistorySetting(a) == CFieldHistorySetting(b);
                    });
}

int CHistorySettings::AddSetting(const CFieldHistorySetting& setting) {
  const int count = GetCount();
  if (count == kMaxLines) {
    return kTableFull;
  }
  const int at = HasSetting(setting);
  if (at < 0) {
    ChangeTable([&] {
      m_HS.settings[count] = setting;
      SetCount(count + 1);
    });
    return count;
  }
  if (GetSetting(at).GetNumDays() < setting.GetNumDays()) {
    ChangeSettings(at, setting);
  }
  return kAlreadyThere;
}

int CHistorySettings::ChangeSettings(int index, const CFieldHistorySetting& setting) {
  const int count = GetCount();
  for (int i = 0; i < count; ++i) {
    if (i != index && GetSetting(i).HasSamePointType(setting) != 0) {
      return kAlreadyThere;
    }
  }
  if (index < 0 || index >= count) {
    return kBadIndex;
  }
  ChangeTable([&] { m_HS.settings[index] = setting; });
  return index;
}

int CHistorySettings::RemoveSettings(int index) {
  const int count = GetCount();
  if (index < 0 || index >= count) {
    return 0;
  }
  // The move ends one line short of the last: saved tables and the modules that edit them depend on
  // what that leaves.
  ChangeTable([&] {
    for (int k = index + 1; k <= count - 2; ++k) {
      m_HS.settings[k - 1] = m_HS.settings[k];
    }
    SetCount(count - 1);
  });
  return 1;
}

void CHistorySettings::RemoveAllSettings() {
  SetCount(0);
  SetFieldLists();
}

// Exchanging each line with every later one that belongs before it also decides how lines of equal
// keys end up among each other, so a library's sort wouldn't give the same table.
void CHistorySettings::SortSettings() {
  struct Keyed {
    const CString* name;
    Line line;
    [[nodiscard]] bool BelongsBehind(const Keyed& other) const {
      const int order = name->Compare(*other.name);
      return order != 0 ? order > 0
                        : CResoln(other.line.fieldResolution.resolution) <
                              CResoln(line.fieldResolution.resolution);
    }
  };
  std::array<Keyed, kMaxLines> keyed;
  const std::size_t count = Lines().size();
  for (std::size_t i = 0; i < count; ++i) {
    const Line& line = m_HS.settings[i];
    keyed[i] = {&CatalogueEntryOf(line.fieldResolution.wFieldID).Description(), line};
  }
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = i + 1; j < count; ++j) {
      if (keyed[i].BelongsBehind(keyed[j])) {
        std::swap(keyed[i], keyed[j]);
      }
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    m_HS.settings[i] = keyed[i].line;
  }
}

void CHistorySettings::CreateDefaultSettings(unsigned char kind) {
  if (kind < kDefaults.size()) {
    AddMissing(kDefaults[kind]);
  }
}

void CHistorySettings::CreateDefaultSettingsFDCN() {
  AddMissing(kTicksAndMinutes);
}

// Days that were set stay, also where they are fewer.
void CHistorySettings::AddMissing(LineSpan lines) {
  for (const Line& line : lines) {
    if (HasFieldResolutionSetting(line) < 0) {
      AddSetting(line);
    }
  }
}

int CHistorySettings::GetFieldIDListNeededForHistory(unsigned short* const ids, int maxIds) const {
  int copied = 0;
  for (const CField& field : m_AtomicFieldList) {
    if (copied >= maxIds) {
      break;
    }
    ids[copied++] = field.GetFieldVal();
  }
  return copied;
}

int CHistorySettings::IsFieldIDNeededForHistory(unsigned short id) const {
  return m_AllFieldList.Find(CField(id)) != nullptr ? 1 : 0;
}

void CHistorySettings::SetFieldLists() {
  CZRListEx<CField> atomic;
  CZRListEx<CField> updated;
  // Daily trade bars need nothing of the quote.
  const CFieldResoln tradeDays(kTradeDays.fieldResolution);
  for (const Line& line : Lines()) {
    const CFieldResoln pair(line.fieldResolution);
    if (pair == tradeDays) {
      continue;
    }
    const CZRGSFieldInfo* const entry = Catalogue().GetFieldInfo(pair.GetField().GetFieldVal());
    if (entry == nullptr) {
      continue;
    }
    AppendMissing(atomic, entry->GetAtomicFieldIDList());
    const CZRListEx<CField>* const updates = entry->GetUpdateFieldIDListPtr(pair.GetResoln());
    if (updates != nullptr) {
      AppendMissing(updated, *updates);
    }
  }
  CZRListEx<CField> all = atomic;
  AppendMissing(all, updated);
  m_AtomicFieldList = std::move(atomic);
  m_UpdateFieldList = std::move(updated);
  m_AllFieldList = std::move(all);
}

CObject* CHistorySettingsTemplate::CreateObject() {
  return new CHistorySettingsTemplate;
}

void CHistorySettingsTemplate::SetHistSettings(const CHistorySettings* settings) {
  if (settings != nullptr) {
    m_HistSettings = *settings;
  }
}
