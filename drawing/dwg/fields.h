#pragma once
/// The fields of an object type as rows of a table, which reading and writing both walk.
///
///     constexpr FieldRow kCircleRows[] = {
///         row<P3, &AcDbCircle::Data::center>("center"),
///         row<BD, &AcDbCircle::Data::radius>("radius"),
///     };
///
/// A code is named as in the format; handles (`H<5>`) are read from and written to the second stream. A field that
/// versions store differently has a row for each form, with the versions that use it. Fields that depend on each
/// other are one row with functions of its own.

#include <cmath>
#include <span>
#include <string>

#include "db/database.h"
#include "db/stub.h"
#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/codepage.h"
#include "dwg/version.h"

namespace vndk::dwg {

/// How a file keeps its texts.
struct TextForm {
    uint16_t codePage = kCodePage1252;
    bool countsNul = false; ///< The length of a text that isn't empty counts a NUL behind it.
};

struct FieldReader {
    BitReader bits;
    BitReader handles;
    uint64_t own;
    AcDbDatabase& database;
    const TextForm& form;
    Version version;

    std::string text() {
        std::string raw = bits.TV();
        return form.codePage == kCodePage1252 ? raw : textFromDrawing(raw, form.codePage);
    }
    uint64_t handle() { return handles.H().absolute(own); }
    /// Null for a handle that names no object of the drawing.
    AcDbObjectId id() { return database.idOf(handle()); }
    /// A number from the file that nothing can be computed with makes the object a damaged one.
    double number(double value) { return std::isfinite(value) ? value : static_cast<double>(bits.fail()); }
    /// A count whose items take at least `bitsPerItem` each, checked against what is left.
    uint32_t count(uint32_t value, size_t bitsPerItem) {
        return value <= bits.remaining() / bitsPerItem ? value : static_cast<uint32_t>(bits.fail());
    }
};

/// The handle by which a file that is being written names the object: 0 for none, and for one that isn't in it.
inline uint64_t writtenHandle(AcDbObjectId id) {
    const AcDbStub* const stub = id.stub();
    return stub && !stub->has(kStubLeftOut) ? stub->handle.value() : 0;
}

struct FieldWriter {
    BitWriter& bits;
    BitWriter& handles;
    const TextForm& form;
    Version version;

    void text(const std::string& value);
    void id(unsigned code, AcDbObjectId id) { handles.H(code, writtenHandle(id)); }
};

struct FieldRow {
    const char* name;
    VersionMask versions;
    void (*read)(FieldReader& reader, void* data);
    void (*write)(FieldWriter& writer, const void* data);
};

inline void readRows(std::span<const FieldRow> rows, FieldReader& reader, void* data) {
    for (const FieldRow& row : rows)
        if (row.versions & maskOf(reader.version))
            row.read(reader, data);
}

inline void writeRows(std::span<const FieldRow> rows, FieldWriter& writer, const void* data) {
    for (const FieldRow& row : rows)
        if (row.versions & maskOf(writer.version))
            row.write(writer, data);
}

/// The codes of the format. Each reads and writes values of the types that its fields have.
namespace code {

struct B {
    template <class T>
    static T read(FieldReader& r) {
        return r.bits.B();
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.B(v);
    }
};

struct RC {
    template <class T>
    static T read(FieldReader& r) {
        return static_cast<T>(r.bits.RC());
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.RC(static_cast<uint8_t>(v));
    }
};

struct BS {
    template <class T>
    static T read(FieldReader& r) {
        return static_cast<T>(r.bits.BS());
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.BS(static_cast<uint16_t>(v));
    }
};

struct BL {
    template <class T>
    static T read(FieldReader& r) {
        return static_cast<T>(r.bits.BL());
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.BL(static_cast<uint32_t>(v));
    }
};

struct BD {
    template <class T>
    static T read(FieldReader& r) {
        return r.number(r.bits.BD());
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.BD(v);
    }
};

struct RD2 {
    template <class T>
    static T read(FieldReader& r) {
        T v;
        v.x = r.number(r.bits.RD());
        v.y = r.number(r.bits.RD());
        return v;
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.RD(v.x);
        w.bits.RD(v.y);
    }
};

struct P3 {
    template <class T>
    static T read(FieldReader& r) {
        T v;
        v.x = r.number(r.bits.BD());
        v.y = r.number(r.bits.BD());
        v.z = r.number(r.bits.BD());
        return v;
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.BD(v.x);
        w.bits.BD(v.y);
        w.bits.BD(v.z);
    }
};

/// A thickness, one bit for 0.
struct BT {
    template <class T>
    static T read(FieldReader& r) {
        return r.bits.B() ? 0.0 : r.number(r.bits.BD());
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.bits.B(v == 0);
        if (v != 0)
            w.bits.BD(v);
    }
};

/// A normal, one bit for the Z axis.
struct BE {
    template <class T>
    static T read(FieldReader& r) {
        return r.bits.B() ? T(0, 0, 1) : P3::read<T>(r);
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        const bool usual = v == T(0, 0, 1);
        w.bits.B(usual);
        if (!usual)
            P3::write<T>(w, v);
    }
};

struct TV {
    template <class T>
    static T read(FieldReader& r) {
        return r.text();
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.text(v);
    }
};

/// A handle, written with that code.
template <unsigned Code>
struct H {
    template <class T>
    static T read(FieldReader& r) {
        return r.id();
    }
    template <class T>
    static void write(FieldWriter& w, const T& v) {
        w.id(Code, v);
    }
};

} // namespace code

template <class>
struct MemberOf;
template <class T, class C>
struct MemberOf<T C::*> {
    using Class = C;
    using Type = T;
};

template <class Code, auto Member>
constexpr FieldRow row(const char* name, VersionMask versions = kEveryVersion) {
    using Class = typename MemberOf<decltype(Member)>::Class;
    using Type = typename MemberOf<decltype(Member)>::Type;
    return {
        name, versions,
        [](FieldReader& reader, void* data) { static_cast<Class*>(data)->*Member = Code::template read<Type>(reader); },
        [](FieldWriter& writer, const void* data) {
            Code::template write<Type>(writer, static_cast<const Class*>(data)->*Member);
        }};
}

/// A row with its own functions on the data of one class.
template <class Class, void (*Read)(FieldReader&, Class&), void (*Write)(FieldWriter&, const Class&)>
constexpr FieldRow customRow(const char* name, VersionMask versions = kEveryVersion) {
    return {name, versions, [](FieldReader& reader, void* data) { Read(reader, *static_cast<Class*>(data)); },
            [](FieldWriter& writer, const void* data) { Write(writer, *static_cast<const Class*>(data)); }};
}

} // namespace vndk::dwg
