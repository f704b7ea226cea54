// LISP functions that modules define: who defined them, and the call that runs.
#pragma once

#include "ed/dynamic_linker.h"
#include "lisp/value.h"
#include "rx/lisp_functions.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

class AcApDocument;
struct resbuf;

namespace vndk::host {

class Host;

/// What libraries that see no host find in the registry.
class LibraryFunctions : public AcRxLispFunctions {
public:
    explicit LibraryFunctions(Host& host) : host_(host) {}
    bool define(const char* name, Function function) override;
    void updateDisplay() override;

private:
    Host& host_;
};

class ExternalFunctions {
public:
    using Handler = int (*)();

    explicit ExternalFunctions(Host& host);
    ~ExternalFunctions();

    /// Marks the application that runs, so that its calls are known to be its own.
    class ApplicationScope {
    public:
        ApplicationScope(ExternalFunctions& functions, LoadedApplication& application);
        ~ApplicationScope();
        ApplicationScope(const ApplicationScope&) = delete;
        ApplicationScope& operator=(const ApplicationScope&) = delete;

    private:
        ExternalFunctions& functions_;
        LoadedApplication* former_;
    };

    // For the application that runs, in the current document. False without either.
    bool define(const char* name, int code);
    /// One without a code, a handler and a value.
    bool define(const char* name, AcRxLispFunctions::Function action);
    bool undefine(const char* name, int code);
    bool registerHandler(Handler handler, int code);
    /// Before its code goes: no document reaches the application any more.
    void forgetApplication(const LoadedApplication& application);

    void forgetDocument(const AcApDocument& document);

    LibraryFunctions& libraryFunctions() { return libraryFunctions_; }

    /// One call of an external function.
    struct Call {
        Call* outer;
        int code;
        std::span<const lisp::Value> args;
        lisp::Value result;
        bool hasResult = false;
        size_t lentFrom = 0;     // first of its entries in lent_
        bool inputEnded = false; // a prompt of its own found no more input
    };
    /// The innermost call; null outside of one.
    Call* call() const { return call_; }
    /// The arguments as a list, owned by whoever gets it; what isn't released is released when the call ends.
    resbuf* lendArguments();

private:
    struct Function {
        std::string name;
        LoadedApplication* application;
        int code;
        Handler* handler; // place of the handler of that code
    };
    struct Defined {
        AcApDocument* document;
        std::string name;
        const LoadedApplication* application;
    };

    using Body = std::function<lisp::Outcome<lisp::Value>(std::span<const lisp::Value>)>;

    /// In the document, in place of what the name meant before.
    void setBody(AcApDocument& document, const std::string& name, Body body);
    lisp::Outcome<lisp::Value> run(const Function& function, std::span<const lisp::Value> args);
    void releaseLent(size_t from);
    static void noteReleased(const resbuf* list);

    Host& host_;
    LibraryFunctions libraryFunctions_{host_};
    LoadedApplication* application_ = nullptr;
    std::map<std::pair<const LoadedApplication*, int>, Handler> handlers_;
    std::vector<Defined> defined_;
    std::vector<resbuf*> lent_;
    Call* call_ = nullptr;
};

} // namespace vndk::host
