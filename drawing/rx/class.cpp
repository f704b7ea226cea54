#include "rx/class.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <memory>

namespace {

using ClassDictionary = std::map<std::string, std::unique_ptr<AcRxClass>, std::less<>>;

ClassDictionary& classDictionary() {
    // Leaked on purpose: libraries unregister their classes while the process ends, in any order.
    static auto* const dictionary = new ClassDictionary;
    return *dictionary;
}

AcRxClass* g_descAcRxObject = nullptr;

} // namespace

AcRxClass::AcRxClass(AcRxClass*& holder, const char* name, AcRxClass* parent, const char* dxfName, const char* appName,
                     Factory factory)
    : name_(name), dxfName_(dxfName ? dxfName : ""), appName_(appName ? appName : ""), parent_(parent),
      factory_(factory), holder_(holder) {}

void newAcRxClass(AcRxClass*& holder, const char* name, AcRxClass* parent, const char* dxfName, const char* appName,
                  AcRxClass::Factory factory) {
    auto& entry = classDictionary()[name];
    if (!entry)
        entry = std::make_unique<AcRxClass>(holder, name, parent, dxfName, appName, factory);
    holder = entry.get();
}

AcRxClass* acrxFindClass(const char* name) {
    const auto it = classDictionary().find(name);
    return it == classDictionary().end() ? nullptr : it->second.get();
}

void deleteAcRxClass(AcRxClass* cls) {
    assert(std::none_of(classDictionary().begin(), classDictionary().end(),
                        [cls](const auto& entry) { return entry.second->myParent() == cls; }) &&
           "a class is deleted after all classes derived from it");
    if (!cls)
        return;
    cls->holder_ = nullptr;
    classDictionary().erase(classDictionary().find(cls->name()));
}

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
    if (!g_descAcRxObject)
        newAcRxClass(g_descAcRxObject, "AcRxObject", nullptr, nullptr, "", nullptr);
    return g_descAcRxObject;
}

AcRxClass* AcRxObject::isA() const { return AcRxObject::desc(); }
