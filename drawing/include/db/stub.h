// The slot of one database object: what an id points at.
//
// An object of a file is decoded only when it is first opened; until then the slot just knows its bytes. An
// object that nobody changed keeps those bytes, so that saving writes them again as they were.
#pragma once

#include "db/object_id.h"

#include <cstdint>

class AcRxClass;

/// States and marks of a slot.
enum AcDbStubFlag : uint16_t {
    kStubWriter = 1,        // open for write
    kStubNotifier = 2,      // open for notify
    kStubErased = 4,        // erased; comes back by erase(false) or undo
    kStubModified = 8,      // differs from its bytes: encode it anew when saving
    kStubModifiedOpen = 16, // changed since it was opened for write
    kStubLinksChanged = 32, // only its neighbours or its list of references changed
    kStubDecodeFailed = 64, // its fields couldn't be decoded: kept as opaque bytes
    kStubNew = 128,         // not in any file yet
    kStubNotifying = 256,   // its reactors are being told
    kStubEntity = 512,      // known to be a graphical entity
    kStubLeftOut = 1024,    // not in the file that is being written: erased, or gone with an erased owner
};

struct AcDbStub {
    AcDbHandle handle;
    AcDbDatabase* database = nullptr;
    AcDbObject* object = nullptr; // owned by the database; null until decoded
    // The object's class; before it is decoded, null or the one that its record's type stands for. Kept here since
    // whole spaces are looked through for one class.
    const AcRxClass* cls = nullptr;
    const uint8_t* bytes = nullptr; // framed object (size field to CRC) in the file's image, or null
    uint32_t byteCount = 0;
    uint32_t index = 0;     // place among the database's slots, ascending by handle
    uint32_t undoGroup = 0; // last undo group that holds its former state
    uint16_t readers = 0;
    uint16_t flags = 0;

    /// Gives the slot its object, or null when it has none any more.
    void setObject(AcDbObject* made);

    bool has(AcDbStubFlag flag) const { return flags & flag; }
    void set(AcDbStubFlag flag) { flags = static_cast<uint16_t>(flags | flag); }
    void clear(AcDbStubFlag flag) { flags = static_cast<uint16_t>(flags & ~flag); }
};
