// What INSERT makes, read back.
#pragma once

#include "commands_fixture.h"
#include "db/block_reference.h"
#include "db/text.h"

class InsertFixture : public CommandsTest {
protected:
    /// The references of the current space, one a line: "DESK 5,5 s 1,1,1 r 90 TAG='value'@6,5", and for rows and
    /// columns " 4 x 20, 3 x 10" behind the angle.
    std::string references() { return references(database()); }
    static std::string references(const AcDbDatabase& database);
    std::vector<AcDbObjectId> referenceIds() { return referenceIds(database()); }
    static std::vector<AcDbObjectId> referenceIds(const AcDbDatabase& database);
    AcDbObjectId lastReference() { return referenceIds().back(); }
    /// Null when there is no such block.
    AcDbObjectId renameBlock(const char* name, const char* newName);
};
