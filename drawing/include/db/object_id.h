// Handles and ids of database objects.
//
// A handle is the number under which a drawing file knows an object; it never changes. An id is the same
// object's place in the open database: a pointer to its slot, so following it costs nothing. An id stays
// valid as long as its database, also when the object is erased.
#pragma once

#include <cstdint>
#include <functional>

class AcDbDatabase;
class AcDbObject;
struct AcDbStub;

class AcDbHandle {
public:
    constexpr AcDbHandle() = default;
    constexpr explicit AcDbHandle(uint64_t value) : value_(value) {}

    constexpr uint64_t value() const { return value_; }
    constexpr bool isNull() const { return value_ == 0; }
    /// Upper-case hexadecimal text without leading zeros, at most 16 characters and the terminating zero.
    void getIntoAsciiBuffer(char* buffer) const;
    constexpr bool operator==(const AcDbHandle&) const = default;
    constexpr auto operator<=>(const AcDbHandle&) const = default;

private:
    uint64_t value_ = 0;
};

class AcDbObjectId {
public:
    static const AcDbObjectId kNull;

    constexpr AcDbObjectId() = default;
    constexpr explicit AcDbObjectId(AcDbStub* stub) : stub_(stub) {}

    constexpr bool isNull() const { return stub_ == nullptr; }
    void setNull() { stub_ = nullptr; }
    /// True for an id that has an object in its database, erased or not.
    bool isValid() const;
    bool isErased() const;
    /// The database of the object; null for the null id.
    AcDbDatabase* database() const;
    AcDbHandle handle() const;
    /// The slot itself, for the database's own code.
    constexpr AcDbStub* stub() const { return stub_; }
    intptr_t asOldId() const { return reinterpret_cast<intptr_t>(stub_); }
    void setFromOldId(intptr_t value) { stub_ = reinterpret_cast<AcDbStub*>(value); }

    constexpr bool operator==(const AcDbObjectId&) const = default;
    constexpr auto operator<=>(const AcDbObjectId&) const = default;

private:
    AcDbStub* stub_ = nullptr;
};

/// Ids that tell how the holder stands to the object: a hard reference keeps it from being purged, an owner
/// takes it along when copied. They are plain ids otherwise.
class AcDbHardOwnershipId : public AcDbObjectId {
public:
    constexpr AcDbHardOwnershipId() = default;
    constexpr AcDbHardOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};
class AcDbSoftOwnershipId : public AcDbObjectId {
public:
    constexpr AcDbSoftOwnershipId() = default;
    constexpr AcDbSoftOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};
class AcDbHardPointerId : public AcDbObjectId {
public:
    constexpr AcDbHardPointerId() = default;
    constexpr AcDbHardPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};
class AcDbSoftPointerId : public AcDbObjectId {
public:
    constexpr AcDbSoftPointerId() = default;
    constexpr AcDbSoftPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};

/// True if both ids name the same object.
inline bool c5ObjIdIsEqualTo(const AcDbObjectId& a, const AcDbObjectId& b) { return a == b; }

template <>
struct std::hash<AcDbObjectId> {
    size_t operator()(const AcDbObjectId& id) const noexcept { return std::hash<const void*>()(id.stub()); }
};
