// The one dock bar of the palette.
#pragma once

class CResizableDockingDialog;

/// Null until the command BLOCKS has made it, and after the module was unloaded by the host.
CResizableDockingDialog* PaletteBar();
/// The bar as an object, without its window.
void CreatePaletteBar();
/// Ends window and object; does nothing without them.
void DestroyPaletteBar();
