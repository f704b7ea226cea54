// The pictures that files keep with entities of unknown classes.
#include "../tests/drawing/gi/recorder.h"
#include "db/opaque.h"
#include "gi/entity_drawing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    AcDbOpaqueEntity entity;
    entity.setProxyGraphics(std::string(reinterpret_cast<const char*>(data), size));
    vndk::test::Recorder recorder;
    acgiDrawEntity(entity, recorder);
    return 0;
}
