// One attribute of an Intelligent Block, made from its definition.
#pragma once

class AcDbAttributeDefinition;
class VNDKAttribute;
class VNDKBlockReference;

/// A new attribute for `pReference` with the definition's text; open for write, not yet in the drawing and the
/// caller's. It stands at the definition's point moved by the reference's position alone: the block's base point, scale
/// and rotation play no part.
VNDKAttribute* MakeAttribute(AcDbAttributeDefinition* pDefinition, VNDKBlockReference* pReference);

/// Copies conditional points and formulas of a VNDKAttributeDefinition; nothing for any other class.
void CopyFormulas(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute);
