// The window that shows the current drawing, as far as the host's code has to do with it. Without a window there is
// none: nobody waits for what can't be seen.
#pragma once

#include "db/object_id.h"

#include <vector>

class AcGsModel;

namespace vndk::host {

class Display {
public:
    virtual ~Display() = default;

    /// Pixels of the area that shows the drawing, above 0.
    virtual int width() const = 0;
    virtual int height() const = 0;

    /// What is prepared of the drawings for showing them.
    virtual AcGsModel& model() = 0;
    /// The view of the current drawing is another one than before.
    virtual void viewChanged() = 0;
    /// What has changed is on the screen when it returns.
    virtual void update() = 0;
    /// The same with everything prepared anew.
    virtual void regenerate() = 0;
    /// These entities of the current drawing stand out until others do.
    virtual void highlight(std::vector<AcDbObjectId> entities) = 0;
};

} // namespace vndk::host
