// The other attributes of one Intelligent reference, as an attribute's formulas see them.
#pragma once

#include <string>
#include <string_view>

class VNDKAttribute;

namespace vndk::objects {

/// The value of the attribute with that tag that belongs to the same reference. Attributes of one reference stand
/// behind each other in their record, next to the reference, so they are found also while it is being built and
/// doesn't know them yet. False: there is none.
bool findSiblingValue(const VNDKAttribute& attribute, std::string_view tag, std::string& value);

} // namespace vndk::objects
