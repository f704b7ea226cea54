#include "db/block_reference.h"
#include "db/text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// Where a point of the text's frame stands, by its height, width, slant, direction and the way it runs.
AcGePoint3d framePoint(const AcDbText& text, double along, double up) {
    const double runs = text.isMirroredInX() ? -1 : 1, stands = text.isMirroredInY() ? -1 : 1;
    const double x = runs * (along * text.widthFactor() + up * std::tan(text.oblique())) * text.height();
    const double y = stands * up * text.height();
    const double c = std::cos(text.rotation()), s = std::sin(text.rotation());
    return text.position() + AcGeMatrix3d::planeToWorld(text.normal()) * AcGeVector3d(x * c - y * s, x * s + y * c, 0);
}

TEST(AttributePlacement, takesTheDefinitionsFrameThroughEveryTransform) {
    const AcGeScale3d scales[] = {{2, 2, 2}, {2, 5, 2}, {-1, 1, 1}, {-2, 3, 2}, {2, -3, 2}, {-2, -3, 2}, {1, 2, -3}};
    for (const AcGeScale3d& scale : scales)
        for (const double rotation : {0.0, 0.7, 2.5})
            for (const double oblique : {0.0, 0.3})
                for (const bool backwards : {false, true})
                    for (const AcGeVector3d& normal : {AcGeVector3d(0, 0, 1), AcGeVector3d(0, -1, 0)}) {
                        AcDbAttributeDefinition definition({3, 4, 0}, "text", "TAG", "");
                        definition.setHeight(1.5);
                        definition.setRotation(rotation);
                        definition.setOblique(oblique);
                        definition.setWidthFactor(0.8);
                        definition.mirrorInX(backwards);
                        AcDbBlockReference reference;
                        reference.setNormal(normal);
                        reference.setPosition({10, 20, 30});
                        reference.setScaleFactors(scale);
                        reference.setRotation(0.4);
                        AcDbAttribute attribute;
                        ASSERT_EQ(attribute.setAttributeFromBlock(&definition, reference.blockTransform()), Acad::eOk);
                        for (const auto& [along, up] :
                             {std::pair(0.0, 0.0), std::pair(4.0, 0.0), std::pair(1.0, 1.0)}) {
                            const AcGePoint3d expected = reference.blockTransform() * framePoint(definition, along, up);
                            const AcGePoint3d actual = framePoint(attribute, along, up);
                            EXPECT_LT((actual - expected).length(), 1e-9)
                                << scale.sx << ',' << scale.sy << ',' << scale.sz << " r " << rotation << " o "
                                << oblique << " backwards " << backwards << " at " << along << ',' << up;
                        }
                    }
}

} // namespace
