// VNDKGripPoint: a point by which a user stretches what hangs on it.
//
// Its children are the entities of the same space that have one of their points where the grip point stands; its
// formula children are the attributes and definitions that have a conditional point there. The two free functions
// find them anew, each time from the beginning of the space; the ids are soft pointers.
#pragma once

#include "db/block_table.h"
#include "db/point.h"
#include "db/stand_in.h"
#include "objects/library.h"

class VNDKGripPoint : public AcDbPoint, public AcDbStandIn {
    ACDB_DECLARE_MEMBERS(VNDKGripPoint)
public:
    /// Most children of either kind: what a file can hold.
    static constexpr size_t kMaxChildren = 700;

    VNDKGripPoint() = default;

    /// The base point that the drawing had when the children were found.
    Acad::ErrorStatus setInsBase(AcGePoint3d base);
    AcGePoint3d insBase() const { return insBase_; }

    const std::vector<AcDbSoftPointerId>& childEntities() const { return children_; }
    const std::vector<AcDbSoftPointerId>& formulaChildEntities() const { return formulaChildren_; }
    /// eOutOfRange: more than kMaxChildren.
    Acad::ErrorStatus setChildEntityIds(std::vector<AcDbSoftPointerId> ids);
    Acad::ErrorStatus setFormulaChildEntityIds(std::vector<AcDbSoftPointerId> ids);

    void visitReferences(AcDbReferenceVisitor& visitor) override;
    void writeStandIn(AcDbXDataWriter& writer) const override;
    bool readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) override;

private:
    AcGePoint3d insBase_;
    std::vector<AcDbSoftPointerId> children_;
    std::vector<AcDbSoftPointerId> formulaChildren_;
    [[no_unique_address]] vndk::objects::LiveObject live_;
};

/// Gives a closed grip point of the iterator's record its children. An entity hangs on it when a point that defines
/// it (an end, a vertex, a centre, an insertion point) is equal to the grip point's position; other grip points,
/// erased entities and those that can't be opened don't. The iterator is rewound first and stands at the end
/// afterwards. False: an argument is null, the grip point can't be opened for write or there are too many.
bool setChildEntities(VNDKGripPoint* grip, AcDbBlockTableRecordIterator* entities);
/// The same for attributes and definitions that have formulas and a conditional point at the grip point's position.
bool setFormulaChildEntities(VNDKGripPoint* grip, AcDbBlockTableRecordIterator* entities);
