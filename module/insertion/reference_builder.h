// What all roads of insertion share: arguments of the call, the reference in its space, the walk of the definition.
#pragma once

#include "ge/matrix3d.h"
#include "ge/vector.h"
#include "insertion/open_records.h"
#include "objects/block_reference.h"

class AcDbAttributeDefinition;
class VNDKAttribute;

/// Takes the arguments of the running LISP call: a block's name or a drawing's path, and a point; what isn't there
/// stays as it is. False: they are too few, and the function does nothing.
bool ReadInsertionArguments(CString& name, AcGePoint3d& position);

/// Where a reference goes, in world coordinates; angles are radians.
struct CPlacement {
    AcGePoint3d position;
    AcGeScale3d scale;
    double rotation;
};

/// How one road of insertion makes the attributes of its references.
class CAttributeRoad {
public:
    virtual ~CAttributeRoad() = default;

    /// Does a definition that isn't constant get an attribute?
    virtual bool Takes(AcDbAttributeDefinition* pDefinition) = 0;
    /// The attribute is made and not yet in the drawing.
    virtual void OnMade(AcDbAttributeDefinition*, VNDKAttribute*) {}
    /// The attribute stands in the space, still open for write.
    virtual void OnAppended(AcDbAttributeDefinition*, VNDKAttribute*) {}
};

/// The definition of that id, open for read; the caller closes it. Null if it doesn't open or is something else.
AcDbBlockTableRecord* OpenDefinition(AcDbObjectId blockId);

/// Puts an attribute into the space, beside the reference and tied to it, for each definition that the road takes. All
/// are open, the definition for read and the others for write, and stay so. What the last attribute's append gave;
/// `status` if there was none.
Acad::ErrorStatus AddAttributes(AcDbBlockTableRecord* pDefinition, VNDKBlockReference* pReference,
                                AcDbBlockTableRecord* pSpace, CAttributeRoad& road, Acad::ErrorStatus status);

/// An Intelligent Block that is being built. Its space (open for write), its definition (for read) and the reference
/// (for write) stay open until they are closed here, or with this object, in that order.
class CReferenceBuilder {
public:
    CReferenceBuilder() = default;

    /// Makes the reference, with `name` as the original block name and `base` as the block's base point, and appends it
    /// to the current space. 0; or the id of the string, with a place for the name, that tells why the drawing has no
    /// such reference now.
    UINT Build(AcDbObjectId blockId, const CString& name, const CPlacement& placement, const AcGePoint3d& base);
    /// Makes an attribute beside the reference for each definition that the road takes.
    void AddAttributes(CAttributeRoad& road) {
        ::AddAttributes(m_definition.get(), m_reference.get(), m_space.get(), road, Acad::eOk);
    }

    void CloseSpace() { m_space.Attach(nullptr); }
    /// Closes the space, if it is open, and the definition.
    void CloseDefinition();
    /// The open reference, which is now the caller's to close.
    VNDKBlockReference* DetachReference() { return m_reference.Detach(); }

private:
    COpened<VNDKBlockReference> m_reference;
    COpened<AcDbBlockTableRecord> m_definition;
    COpened<AcDbBlockTableRecord> m_space;
};
