// Grip points and what hangs on them.
#pragma once

/// Finds anew what hangs on the grip points of the current space, and gives them the drawing's base point.
void RelinkGripPoints();
