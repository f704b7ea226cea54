// Classes that the file format has no type for, kept in a file as the ordinary object that they look like.
//
// A class derived from AcDbText, say, is written as the text that its base is, with the rest of its data in
// xdata under one registered application name. Programs that don't know the class see and edit the text;
// where the class is registered the object becomes its own class again when it is decoded. A library registers
// its classes when it starts and removes them before it goes.
#pragma once

#include "db/object_id.h"
#include "db/xdata.h"

class AcDbObject;
class AcRxClass;

/// Implemented by an object whose class is kept by stand-in (derive from it beside the AcDb class).
class AcDbStandIn {
public:
    virtual ~AcDbStandIn() = default;
    /// Adds the items that the base class's record can't hold, behind the class name item.
    virtual void writeStandIn(AcDbXDataWriter& writer) const = 0;
    /// Takes them back; handles are looked up in `database`. False: the items aren't of this class's form; the
    /// object then stays the ordinary one.
    virtual bool readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) = 0;
};

/// One registered class.
struct AcDbStandInClass {
    AcRxClass* cls;              // for example VNDKAttribute::desc()
    AcRxClass* ordinary;         // for example AcDbText::desc()
    const char* applicationName; // the registered application under which the items stand
};

void acdbRegisterStandIn(const AcDbStandInClass& standIn);
void acdbUnregisterStandIn(AcRxClass* cls);
/// The class registered under that application and class name; null if none.
const AcDbStandInClass* acdbFindStandIn(std::string_view applicationName, std::string_view className);
/// The registration of that class; null if it is an ordinary class.
const AcDbStandInClass* acdbStandInOf(const AcRxClass* cls);
