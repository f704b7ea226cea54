// Dimension styles: the variables by which dimensions, leaders and tolerances are drawn.
//
// Members are named as the variables. Lengths are drawing units, to be multiplied by dimscale; linear measurements are
// multiplied by dimlfac before they are shown.
#pragma once

#include "db/symbol_table.h"

class AcDbEntity;

class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbDimStyleTableRecord)
public:
    struct Data {
        std::string dimpost, dimapost; // what stands around measurement and alternate one
        double dimscale = 1, dimasz = 0.18, dimexo = 0.0625, dimdli = 0.38, dimexe = 0.18;
        double dimrnd = 0, dimdle = 0, dimtp = 0, dimtm = 0;
        bool dimtol = false, dimlim = false, dimtih = true, dimtoh = true, dimse1 = false, dimse2 = false;
        short dimtad = 0, dimzin = 0, dimazin = 0;
        double dimtxt = 0.18, dimcen = 0.09, dimtsz = 0, dimaltf = 25.4, dimlfac = 1;
        double dimtvp = 0, dimtfac = 1, dimgap = 0.09, dimaltrnd = 0;
        bool dimalt = false;
        short dimaltd = 2;
        bool dimtofl = false, dimsah = false, dimtix = false, dimsoxd = false;
        short dimclrd = 0, dimclre = 0, dimclrt = 0; // ACI
        short dimadec = 0, dimdec = 4, dimtdec = 4, dimaltu = 2, dimalttd = 2, dimaunit = 0, dimfrac = 0, dimlunit = 2;
        short dimdsep = '.', dimtmove = 0, dimjust = 0;
        bool dimsd1 = false, dimsd2 = false;
        short dimtolj = 1, dimtzin = 0, dimaltz = 0, dimalttz = 0;
        bool dimupt = false;
        short dimatfit = 3;
        short dimlwd = AcDbDimStyleTableRecord::kByBlock, dimlwe = AcDbDimStyleTableRecord::kByBlock;
        bool fileFlag = false;
        AcDbObjectId dimtxsty;                            // a text style
        AcDbObjectId dimldrblk, dimblk, dimblk1, dimblk2; // blocks of arrow heads; null is the filled one
        std::string arrowNames[3];                        // of dimblk, dimblk1 and dimblk2 where a file has just names
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data);
    /// Sets the data while decoding: no undo, no open check.
    void setFileData(Data data) { data_ = std::move(data); }
    void visitReferences(AcDbReferenceVisitor& visitor) override;

private:
    static constexpr short kByBlock = -2; // a lineweight
    Data data_;
};

/// The variables that hold for an entity: those of the style, and over them those that the entity's extended data give
/// it for itself. With a null or erased style those of a new drawing.
AcDbDimStyleTableRecord::Data acdbDimVariables(const AcDbEntity& entity, AcDbObjectId style);
