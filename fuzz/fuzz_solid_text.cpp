// The text form of solids: measured, drawn as triangles, moved. A text that was understood is understood when it has
// moved.
#include <cstdlib>
#include <string_view>

#include "acis/body.h"
#include "acis/face_mesh.h"
#include "acis/sat_text.h"

using namespace vndk::acis;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const Body& body : Body::read(text)) {
        Mesh mesh;
        std::vector<std::vector<AcGePoint3d>> lines;
        for (const Face& face : body.faces)
            if (face.surface) {
                const FaceDomain domain(face);
                domain.addTo(mesh);
                domain.addIsolines(4, lines);
            }
        for (const uint32_t corner : mesh.triangles)
            if (corner >= mesh.points.size())
                std::abort();
    }
    if (const auto moved = transformed(text, AcGeMatrix3d::translation({1, 2, 3})))
        if (!SatText::parse(*moved))
            std::abort();
    return 0;
}
