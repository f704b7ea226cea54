#include "rx/registry.h"

#include <cstdio>
#include <cstdlib>

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)

AcRxObject* AcRxDictionary::at(const char* name) const {
    const auto it = entries_.find(name);
    return it == entries_.end() ? nullptr : it->second;
}

AcRxObject* AcRxDictionary::atPut(const char* name, AcRxObject* object) {
    AcRxObject*& entry = entries_[name];
    AcRxObject* const former = entry;
    entry = object;
    return former;
}

AcRxObject* AcRxDictionary::remove(const char* name) {
    const auto it = entries_.find(name);
    if (it == entries_.end())
        return nullptr;
    AcRxObject* const former = it->second;
    entries_.erase(it);
    return former;
}

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary registry;
    return &registry;
}

void acrx_abort(const char* message) {
    std::fprintf(stderr, "vondrake: %s\n", message);
    std::fflush(nullptr);
    std::abort();
}
