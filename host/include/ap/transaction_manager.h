// A document's transaction manager, as far as it brings the display up to date.
#pragma once

#include "rx/class.h"

/// Belongs to its document.
class AcTransactionManager : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcTransactionManager)
public:
    /// Shows what recordGraphicsModified has told of, without waiting for the command's end. Without a window there is
    /// nothing to draw.
    void flushGraphics();
};
