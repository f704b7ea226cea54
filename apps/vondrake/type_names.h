// Names of object types, as people who work with drawing files know them.
#pragma once

#include <string>

class AcDbObject;

namespace vndk::app {

/// The DXF type name, made unambiguous where DXF has one name for several types of a file ("VERTEX_3D",
/// "POLYLINE_PFACE", "DIMENSION_LINEAR", "MINSERT"), and without the prefix that some class names have ("LAYOUT",
/// "PLACEHOLDER", "DICTIONARYWDFLT"). An Intelligent object counts as the ordinary one that a file holds.
std::string typeNameOf(const AcDbObject& object);

} // namespace vndk::app
