#pragma once
/// The empty drawing that NEW begins with.

class AcDbDatabase;

namespace vndk::dwg {

/// Fills a database that holds nothing with the tables, spaces, dictionaries and records that every drawing has.
void buildDefaultDrawing(AcDbDatabase& database);

} // namespace vndk::dwg
