#include "db/reactors.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabaseReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObjectReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject)

AcDbReactorList<AcRxEventReactor>& acrxEventReactors() {
    static AcDbReactorList<AcRxEventReactor> reactors;
    return reactors;
}
