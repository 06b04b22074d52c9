// How the library's classes describe themselves at run time.
//
// Every class under CObject has one constant CRuntimeClass record. A class is recognised by the
// address of its record: GetRuntimeClass() gives that of an object's exact class, and
// IsKindOf(RUNTIME_CLASS(X)) asks whether X is that class or one of its bases. Records are constant
// and may be read from any thread.
//
//   if (point.IsKindOf(RUNTIME_CLASS(CDPTDblTick))) ...
#ifndef PXDUTIL_FOUNDATION_OBJECT_H
#define PXDUTIL_FOUNDATION_OBJECT_H

#include <pxdutil/foundation/export.h>

class CArchive;
class CObject;

// Where a host's diagnostic dump would go. The library dumps nothing.
class CDumpContext;

// What a class says of itself. Plain data, one constant per class.
struct PXDUTIL_API CRuntimeClass {
  // The class's own name, NUL-terminated.
  const char* m_lpszClassName;
  // The size of an object in bytes, packed where the class is packed.
  int m_nObjectSize;
  // 0xFFFF for classes that take no part in versioned serialisation.
  unsigned int m_wSchema;
  // Makes an object on the heap; null where objects aren't made by name.
  CObject* (*m_pfnCreateObject)();
  // The record of the base class; the function or its result is null at the root.
  const CRuntimeClass* (*m_pfnGetBaseClass)();
  // Links of a host's class registry; always null here.
  const CRuntimeClass* m_pNextClass;
  const void* m_pClassInit;

  // A new object of the class, owned by the caller, or null where there is no create function.
  [[nodiscard]] CObject* CreateObject() const;

  // Whether this is `base` or has it among its bases.
  [[nodiscard]] bool IsDerivedFrom(const CRuntimeClass* base) const noexcept;
};

// The schema number of classes without versioned serialisation.
inline constexpr unsigned int kNoSchema = 0xFFFF;

// The record of class X: RUNTIME_CLASS(CObject) is &CObject::classCObject.
#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

// Declares a class's record, with `access` for its creation by name. To be followed by an access
// specifier.
#define PXDUTIL_DECLARE_RUNTIME_CLASS(class_name)        \
 public:                                                 \
  static const CRuntimeClass class##class_name;          \
  static const CRuntimeClass* GetThisClass() noexcept {  \
    return &class##class_name;                           \
  }                                                      \
  const CRuntimeClass* GetRuntimeClass() const override; \
                                                         \
 protected:                                              \
  static const CRuntimeClass* _GetBaseClass() noexcept

// Defines the record and its accessors; `create` is a function that makes an object, or nullptr.
#define PXDUTIL_DEFINE_RUNTIME_CLASS(class_name, base_name, schema, create) \
  const CRuntimeClass class_name::class##class_name = {                     \
      #class_name, static_cast<int>(sizeof(class_name)), (schema),          \
      (create),    &class_name::_GetBaseClass,           nullptr,           \
      nullptr};                                                             \
  const CRuntimeClass* class_name::_GetBaseClass() noexcept {               \
    return RUNTIME_CLASS(base_name);                                        \
  }                                                                         \
  const CRuntimeClass* class_name::GetRuntimeClass() const {                \
    return RUNTIME_CLASS(class_name);                                       \
  }

// Objects are packed: the data points that derive from this are walked by byte stride, and the
// header in front of their flag byte is one pointer and no padding.
#pragma pack(push, 1)

// The root of all classes with run-time records.
class PXDUTIL_API CObject {
 public:
  // The root's record, and the same by its address.
  static const CRuntimeClass classCObject;
  static const CRuntimeClass* GetThisClass() noexcept { return &classCObject; }

  // The record of the object's exact class.
  virtual const CRuntimeClass* GetRuntimeClass() const;
  virtual ~CObject();
  // Stores the object into a storing archive or fills it from a loading one. The root does nothing.
  virtual void Serialize(CArchive& archive);
  // Hooks of a host's diagnostics; the library's classes do nothing in them.
  virtual void AssertValid() const;
  virtual void Dump(CDumpContext& context) const;

  // Whether the object's class is `record`'s class or derives from it.
  [[nodiscard]] bool IsKindOf(const CRuntimeClass* record) const noexcept;

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};

#pragma pack(pop)

static_assert(sizeof(CObject) == sizeof(void*), "the object header is one pointer");
static_assert(alignof(CObject) == 1, "the object header doesn't align what derives from it");

// The entry function that a host calls once after loading the module. It needs nothing done, and is
// kept so that hosts can load this module as they load their others.
extern "C" PXDUTIL_API void InitPXDUtilDll(void);

#endif
