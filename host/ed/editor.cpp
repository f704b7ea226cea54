#include "ed/editor.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor)
ACRX_NO_CONS_DEFINE_MEMBERS(AcEditor, AcRxObject)

void AcEditor::addReactor(AcEditorReactor* reactor) {
    if (!reactor)
        return;
    reactors_.add(reactor);
    acrxEventReactors().add(reactor);
}

void AcEditor::removeReactor(AcEditorReactor* reactor) {
    reactors_.remove(reactor);
    acrxEventReactors().remove(reactor);
}
