// Reads and evaluates any bytes as LISP, with a limit on steps and no host behind it.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lisp/interpreter.h"
#include "lisp/printer.h"

namespace {

class SilentHost : public vndk::lisp::HostLink {
public:
    void print(std::string_view) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilentHost host;
    vndk::lisp::Limits limits;
    limits.steps = 10'000;
    limits.arguments = 4096;
    limits.stringLength = 1u << 16;
    vndk::lisp::Interpreter lisp(host, limits);
    const auto result = lisp.evaluateText({reinterpret_cast<const char*>(data), size});
    if (result)
        (void)toText(result.value(), vndk::lisp::PrintStyle::Readable, 1u << 16);
    return 0;
}
