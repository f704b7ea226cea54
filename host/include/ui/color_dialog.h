// The dialog "Select Color".
#pragma once

/// Lets the user choose a colour from the palette or by name or number. `color`: an index to begin with, and the one
/// chosen; 0 ByBlock and 256 ByLayer only with `allowMetaColor`. `layerColor`: what ByLayer looks like. False when the
/// user cancels or no dialog can be made; `color` is left as it was.
bool acedSetColorDialog(int& color, bool allowMetaColor, int layerColor);
