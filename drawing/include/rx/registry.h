// Services by name: acrxSysRegistry() answers names such as "AcEditor" with an object that the caller casts
// with Class::cast(). The registry doesn't own what is registered.
#pragma once

#include "rx/class.h"

#include <map>
#include <string>

class AcRxDictionary : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxDictionary)
public:
    /// The object of that name, or null. Not owned by the caller.
    AcRxObject* at(const char* name) const;
    /// Registers an object; the one that had the name before is given back (null if none). Neither is owned.
    AcRxObject* atPut(const char* name, AcRxObject* object);
    /// Forgets a name and gives back its object, or null.
    AcRxObject* remove(const char* name);

private:
    std::map<std::string, AcRxObject*> entries_;
};

/// The one registry of the process.
AcRxDictionary* acrxSysRegistry();

/// Ends the process at once because a promise of the database was broken; `message` goes to standard error.
[[noreturn]] void acrx_abort(const char* message);
