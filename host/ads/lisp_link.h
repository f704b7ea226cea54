// What the LISP of one document reaches of the host.
#pragma once

#include "lisp/host_link.h"

class AcApDocument;

namespace vndk::host {

class Host;

class LispLink : public lisp::HostLink {
public:
    LispLink(Host& host, AcApDocument& document) : host_(host), document_(document) {}

    void print(std::string_view text) override;
    lisp::Outcome<lisp::Value> getVariable(std::string_view name) override;
    lisp::Outcome<lisp::Value> setVariable(std::string_view name, const lisp::Value& value) override;
    lisp::Outcome<lisp::Value> command(std::span<const lisp::Value> args) override;
    lisp::Outcome<std::string> loadFile(std::string_view name) override;
    lisp::Outcome<lisp::Value> alert(std::string_view message) override;

    lisp::Outcome<lisp::Value> entget(std::uint64_t ename) override;
    lisp::Outcome<lisp::Value> entlast() override;
    lisp::Outcome<lisp::Value> entnext(std::optional<std::uint64_t> ename) override;
    lisp::Outcome<lisp::Value> entdel(std::uint64_t ename) override;

    lisp::Outcome<lisp::Value> getPoint(const lisp::Value& base, std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getDist(const lisp::Value& base, std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getAngle(const lisp::Value& base, std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getReal(std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getInt(std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getKeyword(std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getString(Blanks blanks, std::string_view prompt) override;
    lisp::Outcome<lisp::Value> getFileName(std::string_view title, std::string_view name, std::string_view extension,
                                           int flags) override;
    lisp::Outcome<lisp::Value> initGet(int bits, std::string_view keywords) override;

private:
    Host& host_;
    AcApDocument& document_;
};

} // namespace vndk::host
