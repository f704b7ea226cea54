// The tables of a drawing and their records, blocks aside (db/block_table.h).
#pragma once

#include "db/dim_style.h"
#include "db/opaque_fields.h"
#include "db/symbol_table.h"
#include "ge/vector.h"

#include <array>

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbLayerTableRecord)
public:
    bool isFrozen() const { return frozen_; }
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isOff() const { return off_; }
    Acad::ErrorStatus setIsOff(bool off);
    bool isLocked() const { return locked_; }
    Acad::ErrorStatus setIsLocked(bool locked);
    bool isFrozenInNewViewports() const { return frozenInNew_; }
    bool isPlottable() const { return plottable_; }
    Acad::ErrorStatus setIsPlottable(bool plottable);
    /// ACI 1 to 255.
    short color() const { return color_; }
    Acad::ErrorStatus setColor(short color);
    AcDbObjectId linetypeObjectId() const { return linetype_; }
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
    /// Hundredths of a millimetre, or -3 for the default.
    short lineWeight() const { return lineWeight_; }
    Acad::ErrorStatus setLineWeight(short weight);
    AcDbObjectId plotStyleNameId() const { return plotStyle_; }
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct FileData {
        bool frozen = false, off = false, frozenInNew = false, locked = false, plottable = true;
        short color = 7;
        short lineWeight = -3;
        AcDbObjectId linetype, plotStyle;
    };
    FileData fileData() const;
    void setFileData(const FileData& data);

private:
    AcDbObjectId linetype_, plotStyle_;
    short color_ = 7;
    short lineWeight_ = -3;
    bool frozen_ = false, off_ = false, frozenInNew_ = false, locked_ = false, plottable_ = true;
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbTextStyleTableRecord)
public:
    struct Data {
        bool isShapeFile = false, isVertical = false;
        double textSize = 0;          // fixed height in drawing units, 0 asks each time
        double xScale = 1;            // width factor
        double oblique = 0;           // radians
        unsigned char generation = 0; // 2 backward, 4 upside down
        double priorSize = 0.2;       // height last used
        std::string fileName;
        std::string bigFontFileName;
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data);
    bool mayBeNameless() const override { return data_.isShapeFile; }
    /// Sets the data while decoding: no undo, no open check.
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbLinetypeTableRecord)
public:
    struct Dash {
        double length = 0; // drawing units: > 0 line, < 0 gap, 0 dot
        unsigned short shapeNumber = 0;
        double xOffset = 0, yOffset = 0;
        double scale = 0;
        double rotation = 0;      // radians
        unsigned short flags = 0; // 1 absolute rotation, 2 text, 4 shape
        AcDbObjectId style;
    };
    struct Data {
        std::string description;
        double patternLength = 0;
        unsigned char alignment = 'A';
        std::vector<Dash> dashes;
        std::string textArea; // 256 bytes in a file
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data);
    void setFileData(Data data) { data_ = std::move(data); }
    void visitReferences(AcDbReferenceVisitor& visitor) override;

private:
    Data data_;
};

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbRegAppTableRecord)
};

ACDB_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord)
ACDB_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord)
ACDB_SYMBOL_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord)
ACDB_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord)
ACDB_SYMBOL_TABLE(AcDbDimStyleTable, AcDbDimStyleTableRecord)

// Tables whose records are kept as they are in the file: they are looked up by name and listed, no more.
class AcDbOpaqueTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbOpaqueTableRecord)
public:
    const char* dxfName() const override { return fields_.typeName.c_str(); }
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    /// What follows the name and the flags of a record.
    const AcDbOpaqueFields& fields() const { return fields_; }
    void setFields(AcDbOpaqueFields fields) { fields_ = std::move(fields); }

private:
    AcDbOpaqueFields fields_;
};
ACDB_SYMBOL_TABLE(AcDbViewTable, AcDbOpaqueTableRecord)
ACDB_SYMBOL_TABLE(AcDbUCSTable, AcDbOpaqueTableRecord)
ACDB_SYMBOL_TABLE(AcDbViewportTable, AcDbOpaqueTableRecord)
ACDB_SYMBOL_TABLE(AcDbVXTable, AcDbOpaqueTableRecord)
