// The two entities that enclose a block's contents in a file. Every block table record has one of each; they aren't
// among its entities.
#pragma once

#include "db/entity.h"

class AcDbBlockBegin : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbBlockBegin)
public:
    AcDbBlockBegin() = default;
    /// The block's full name as the file has it, with the number of an anonymous block; the record's name counts.
    const std::string& fileName() const { return name_; }
    void setFileName(std::string name) { name_ = std::move(name); }

private:
    std::string name_;
};

class AcDbBlockEnd : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbBlockEnd)
public:
    AcDbBlockEnd() = default;
};
