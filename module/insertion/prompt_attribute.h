// Asking for the value of one attribute on the command line.
#pragma once

class AcDbAttributeDefinition;
class VNDKAttribute;

/// Asks with the definition's prompt and text. An answer becomes the attribute's text while the definition's text stays
/// its default value; an empty answer leaves the attribute as it is. Both objects are open, the attribute for write.
/// False: the user cancelled or gave no answer that could be taken, and wants to be asked no more.
bool PromptAttribute(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute);
