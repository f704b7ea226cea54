#include "insertion/prompt_attribute.h"

#include "ads/ads.h"
#include "mfc/afx.h"
#include "objects/attribute.h"

bool PromptAttribute(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) {
    char* pText = pDefinition->textString();
    char* pPrompt = pDefinition->prompt();
    const CString prompt = CString("\n") + pPrompt + " <" + pText + ">: ";
    acutDelString(pPrompt);
    char answer[1000] = "";
    const int result = acedGetString(1, prompt, answer);
    if (answer[0] != '\0') {
        pAttribute->setTextString(answer);
        pAttribute->setDefaultValue(pText);
    }
    acutDelString(pText);
    return result == RTNORM;
}
