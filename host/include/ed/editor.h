// Who is told of commands, LISP and variables: AcEditorReactor, added to the service "AcEditor".
//
// One list for all: a reactor also gets the database events of AcRxEventReactor. Names of commands are global names
// in the capitals of their registration. Order for one command: commandWillStart, then exactly one of commandEnded,
// commandCancelled, commandFailed; an unknown name gives unknownCommand alone. Order for an expression typed at the
// command line: lispWillStart with its first text, then lispEnded or lispCancelled. All on the host's one thread.
#pragma once

#include "db/reactors.h"

class AcEditorReactor : public AcRxEventReactor {
    ACRX_DECLARE_MEMBERS(AcEditorReactor)
public:
    virtual void commandWillStart(const char* /*cmdStr*/) {}
    virtual void commandEnded(const char* /*cmdStr*/) {}
    virtual void commandCancelled(const char* /*cmdStr*/) {}
    virtual void commandFailed(const char* /*cmdStr*/) {}
    virtual void lispWillStart(const char* /*firstLine*/) {}
    virtual void lispEnded() {}
    virtual void lispCancelled() {}
    virtual void unknownCommand(const char* /*cmdStr*/) {}
    virtual void sysVarWillChange(const char* /*varName*/) {}
    virtual void sysVarChanged(const char* /*varName*/, int /*success*/) {}
};

/// Registered in acrxSysRegistry() as "AcEditor".
class AcEditor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEditor)
public:
    /// The reactor isn't owned; it may be removed while it is being told. Adding twice is once.
    void addReactor(AcEditorReactor* reactor);
    void removeReactor(AcEditorReactor* reactor);
    AcDbReactorList<AcEditorReactor>& reactors() { return reactors_; }

private:
    AcDbReactorList<AcEditorReactor> reactors_;
};
