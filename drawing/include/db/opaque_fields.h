// The fields of an object type that we don't model, kept as they stand in the file.
#pragma once

#include "db/object.h"

#include <memory>
#include <string>
#include <vector>

namespace vndk::dwg {
struct ClassRecord;
}

struct AcDbOpaqueFields {
    /// A handle behind the fields. One that names no object of the drawing keeps its number.
    struct Reference {
        unsigned char code = 5; // 2 soft owner, 3 hard owner, 4 soft pointer, 5 hard pointer
        AcDbObjectId id;
        uint64_t danglingHandle = 0;
    };

    std::string typeName;   // DXF name
    uint16_t fixedType = 0; // the format's type number, or 0 for a type of the classes section
    std::shared_ptr<const vndk::dwg::ClassRecord> fileClass;
    std::string bits; // from the first field on, filled to whole bytes
    uint32_t bitCount = 0;
    std::vector<Reference> references;

    void visit(AcDbReferenceVisitor& visitor);
};
