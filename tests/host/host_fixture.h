// A host with one empty drawing, whose output is kept and whose events are recorded.
#pragma once

#include "ed/host.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class EventRecorder : public AcEditorReactor {
public:
    explicit EventRecorder(std::vector<std::string>& events) : events_(events) {}

    void commandWillStart(const char* name) override { add("start ", name); }
    void commandEnded(const char* name) override { add("end ", name); }
    void commandCancelled(const char* name) override { add("cancel ", name); }
    void commandFailed(const char* name) override { add("fail ", name); }
    void unknownCommand(const char* name) override { add("unknown ", name); }
    void lispWillStart(const char* text) override { add("lisp ", text); }
    void lispEnded() override { add("lisp ended", ""); }
    void lispCancelled() override { add("lisp cancelled", ""); }
    void sysVarWillChange(const char* name) override { add("will change ", name); }
    void sysVarChanged(const char* name, int success) override { add(success ? "changed " : "not changed ", name); }

private:
    void add(const char* what, const char* name) { events_.push_back(std::string(what) + name); }
    std::vector<std::string>& events_;
};

class HostTest : public testing::Test {
protected:
    HostTest() : recorder(events) {
        host.setPrint([this](std::string_view text) { output += text; });
        host.documents().appContextNewDocument(nullptr);
        host.editor().addReactor(&recorder);
    }
    ~HostTest() override { host.editor().removeReactor(&recorder); }

    /// Runs whole lines and gives the output.
    std::string run(std::string_view lines) {
        output.clear();
        problem = host.runText(lines);
        return output;
    }
    AcApDocument& document() { return *host.documents().curDocument(); }
    AcDbDatabase& database() { return *document().database(); }
    /// The value of an expression as LISP prints it.
    std::string lisp(const std::string& expression);
    /// Entities of model space that aren't erased.
    size_t entityCount();

    std::string output;
    std::vector<std::string> events;
    std::optional<vndk::host::Problem> problem;
    vndk::host::Host host;
    EventRecorder recorder;
};
