#include "insertion/open_records.h"

namespace {

/// The block table of the working database, open for read. Null without one or when it doesn't open.
AcDbBlockTable* OpenBlockTable() {
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTable* pTable = nullptr;
    if (!pDatabase || pDatabase->getSymbolTable(pTable, AcDb::kForRead) != Acad::eOk)
        return nullptr;
    return pTable;
}

} // namespace

AcDbBlockTableRecord* OpenBlockForRead(CString name) {
    const COpened<AcDbBlockTable> table(OpenBlockTable());
    AcDbBlockTableRecord* pRecord = nullptr;
    if (table && table->has(name))
        table->getAt(name, pRecord, AcDb::kForRead, false);
    return pRecord;
}

bool BlockExists(CString name) {
    const COpened<AcDbBlockTable> table(OpenBlockTable());
    return table && table->has(name);
}

AcDbBlockTableRecord* OpenCurrentSpace() {
    const COpened<AcDbBlockTable> table(OpenBlockTable());
    AcDbBlockTableRecord* pSpace = nullptr;
    if (table)
        table->getAt(table->database()->tilemode() ? ACDB_MODEL_SPACE : ACDB_PAPER_SPACE, pSpace, AcDb::kForWrite);
    return pSpace;
}
