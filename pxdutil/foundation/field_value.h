// CField, CDPValue and CDPValueInfo: which field a column is, its value, and of what kind it is.
//
// With these three a caller walks the columns of any data point without knowing its class. All are
// plain values.
#ifndef PXDUTIL_FOUNDATION_FIELD_VALUE_H
#define PXDUTIL_FOUNDATION_FIELD_VALUE_H

#include <cstdint>

#include <pxdutil/foundation/export.h>

class CArchive;

// The id of a field of the catalogue; 0xFFFF is unset.
class PXDUTIL_API CField {
 public:
  // The id of no field.
  static constexpr unsigned short kUnset = 0xFFFF;

  CField() = default;
  // Takes any id; whether the catalogue knows it is not asked.
  CField(unsigned short id) : m_id(id) {}

  // Whether the ids are equal, or differ: 1 or 0.
  int operator==(const CField& other) const { return m_id == other.m_id ? 1 : 0; }
  int operator!=(const CField& other) const { return m_id != other.m_id ? 1 : 0; }

  // The id, kUnset where there is none.
  [[nodiscard]] unsigned short GetFieldVal() const { return m_id; }
  void SetFieldVal(unsigned short id) { m_id = id; }

  // The id as 2 bytes.
  void Serialize(CArchive& archive);

 private:
  std::uint16_t m_id = kUnset;
};

// What a column is: the field it stands for, the kind of its value and its width.
class PXDUTIL_API CDPValueInfo {
 public:
  // Which member of a CDPValue is live.
  enum DataType : int {
    ValueFloat = 0,   // GetFloat and SetFloat
    ValueLong = 1,    // GetLong and SetLong
    ValueDouble = 2,  // GetDouble and SetDouble
  };

  // The catalogue's id of the field, 0 in a fresh object.
  [[nodiscard]] unsigned short GetFieldID() const { return m_FieldID; }
  void SetFieldID(unsigned short id) { m_FieldID = id; }
  // A code of CZRGSFieldInfo::GetFieldType: 0 a price, 1 a volume, 2 no history, 3 a record, 4 a
  // count.
  [[nodiscard]] unsigned char GetFieldType() const { return m_FieldType; }
  void SetFieldType(unsigned char type) { m_FieldType = type; }
  // The width of a value in bytes; 0 for a record field.
  [[nodiscard]] unsigned int GetDataSize() const { return m_DataSize; }
  void SetDataSize(unsigned int size) { m_DataSize = size; }

  // The live member that goes with the field type: ValueFloat for prices and volumes, ValueLong for
  // counts, ValueDouble for all else.
  [[nodiscard]] DataType GetDataType() const;

 private:
  std::uint16_t m_FieldID = 0;
  std::uint8_t m_FieldType = 0;
  std::uint32_t m_DataSize = 0;
};

// One column's value: a float, a signed 32-bit number or a double in the same 8 bytes. Nothing here
// says which; take that from CDPValueInfo or from the column's data type. Reading a member that
// wasn't written gives that member's view of the bytes.
class PXDUTIL_API CDPValue {
 public:
  // 0.0 as a double, or the value given, as its own kind.
  CDPValue() { SetDouble(0.0); }
  CDPValue(double value) { SetDouble(value); }
  CDPValue(float value) { SetFloat(value); }
  CDPValue(long value) { SetLong(value); }

  // Each reads its own member. A long is sign-extended from 32 bits where it is wider.
  [[nodiscard]] float GetFloat() const;
  [[nodiscard]] double GetDouble() const;
  [[nodiscard]] long GetLong() const;
  // Each writes its own member's bytes and leaves the others.
  void SetFloat(float value);
  void SetDouble(double value);
  // The low 32 bits of `value`.
  void SetLong(long value);

  // The address of the value for the three kinds, null for any other.
  [[nodiscard]] void* GetDataPtr(CDPValueInfo::DataType type);

 private:
  alignas(double) unsigned char m_bytes[8] = {};
};

static_assert(sizeof(CDPValue) == 8, "a value is 8 bytes");

#endif
