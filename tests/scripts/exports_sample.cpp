// A library with two exported names and a hidden one, for the tests of scripts/check_exports.

namespace {

int counter = 0;

} // namespace

extern "C" __attribute__((visibility("hidden"))) int sample_hidden() { return ++counter; }
extern "C" int sample_entry() { return sample_hidden(); }
extern "C" int sample_extra() { return sample_hidden() + 1; }
