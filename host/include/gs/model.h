// What views show: the contents of blocks, prepared once for all views and all references.
//
// A model follows the databases that it has shown: what changes there is prepared anew at the next drawing. It may
// outlive them; a view mustn't be updated with a block whose database is gone.
#pragma once

#include "db/object_id.h"
#include "ge/extents.h"

class AcGsModel {
public:
    virtual ~AcGsModel() = default;
    /// Everything is prepared anew when it is next drawn.
    virtual void invalidate() = 0;
    /// The box around what of a block table record is seen, in its coordinates; endless lines aside. False: nothing is.
    virtual bool visibleExtents(AcDbObjectId record, AcDbExtents& extents) = 0;
};
