// Run-time classes: every object that a drawing or the host keeps tells its class with isA(), and can be
// cast by it. There is one AcRxClass object for each class over all libraries, so identity is a comparison
// of pointers: `object->isA() == AcDbLine::desc()`.
//
// A class declares its members with ACRX_DECLARE_MEMBERS(Class) and defines them once with one of the
// ACRX_*_DEFINE_MEMBERS macros. The library that defines a class calls Class::rxInit() when it starts and
// deleteAcRxClass(Class::desc()) before it goes.
#pragma once

#include "rx/status.h"

#include <string>

class AcRxClass;
class AcRxObject;

/// Description of one class. Created by rxInit(), owned by the class dictionary.
class AcRxClass {
public:
    using Factory = AcRxObject* (*)();

    AcRxClass(AcRxClass*& holder, const char* name, AcRxClass* parent, const char* dxfName, const char* appName,
              Factory factory);
    AcRxClass(const AcRxClass&) = delete;
    AcRxClass& operator=(const AcRxClass&) = delete;

    /// The C++ class name, for example "AcDbLine".
    const char* name() const { return name_.c_str(); }
    /// The DXF type name, for example "LINE"; null for abstract classes.
    const char* dxfName() const { return dxfName_.empty() ? nullptr : dxfName_.c_str(); }
    /// The application that defines the class, as the classes section of a drawing names it.
    const char* appName() const { return appName_.c_str(); }
    AcRxClass* myParent() const { return parent_; }
    /// True for this class itself and for each of its ancestors.
    bool isDerivedFrom(const AcRxClass* other) const {
        const AcRxClass* cls = this;
        while (cls && cls != other)
            cls = cls->parent_;
        return cls != nullptr;
    }
    /// A new object of the class, owned by the caller; null for an abstract class.
    AcRxObject* create() const { return factory_ ? factory_() : nullptr; }

private:
    std::string name_;
    std::string dxfName_;
    std::string appName_;
    AcRxClass* parent_;
    Factory factory_;
    AcRxClass*& holder_;

    friend void deleteAcRxClass(AcRxClass* cls);
};

/// Registers a class and puts it into `holder`, which becomes null when the class is deleted; for a name that is
/// registered already the class that stands. Called by rxInit().
void newAcRxClass(AcRxClass*& holder, const char* name, AcRxClass* parent, const char* dxfName, const char* appName,
                  AcRxClass::Factory factory);
/// Finds a class by its C++ name; null if there is none.
AcRxClass* acrxFindClass(const char* name);
/// Unregisters and deletes a class. REQUIRES: no object and no derived class of it is left.
void deleteAcRxClass(AcRxClass* cls);

/// Root of all objects with run-time classes.
class AcRxObject {
public:
    virtual ~AcRxObject();

    static AcRxClass* desc();
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* cls) const { return isA()->isDerivedFrom(cls); }

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

/// Members that every run-time class has. cast() gives null for null and for an object of another class.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                                    \
public:                                                                                                                \
    AcRxClass* isA() const override;                                                                                   \
    static AcRxClass* desc();                                                                                          \
    static void rxInit();                                                                                              \
    static CLASS* cast(const AcRxObject* object) {                                                                     \
        return object && object->isKindOf(desc()) ? static_cast<CLASS*>(const_cast<AcRxObject*>(object)) : nullptr;    \
    }

#define ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, DXFNAME, APPNAME, FACTORY)                                             \
    static AcRxClass* g_desc##CLASS = nullptr;                                                                         \
    AcRxClass* CLASS::desc() {                                                                                         \
        if (!g_desc##CLASS)                                                                                            \
            CLASS::rxInit();                                                                                           \
        return g_desc##CLASS;                                                                                          \
    }                                                                                                                  \
    AcRxClass* CLASS::isA() const { return CLASS::desc(); }                                                            \
    void CLASS::rxInit() { newAcRxClass(g_desc##CLASS, #CLASS, PARENT::desc(), DXFNAME, APPNAME, FACTORY); }

/// For an abstract class.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT) ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, nullptr, "", nullptr)
/// For a class with a default constructor.
#define ACRX_DXF_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME, APPNAME)                                                       \
    static AcRxObject* make##CLASS() { return new CLASS; }                                                             \
    ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, DXFNAME, APPNAME, make##CLASS)
