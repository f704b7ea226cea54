// Transforms that every entity has to follow.
#pragma once

#include "ge/matrix3d.h"

#include <vector>

namespace vndk::test {

inline const AcGeVector3d kTilted = AcGeVector3d(1, 2, 3).normal();

struct MatrixCase {
    const char* name;
    AcGeMatrix3d matrix;
};

/// Transforms that scale evenly.
inline std::vector<MatrixCase> evenMatrices() {
    return {
        {"identity", AcGeMatrix3d()},
        {"translation", AcGeMatrix3d::translation({3, -4, 5})},
        {"rotation about Z", AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis, {1, 2, 0})},
        {"rotation about a tilted axis", AcGeMatrix3d::rotation(2.1, kTilted, {1, 2, 3})},
        {"scaling", AcGeMatrix3d::scaling(2.5, {1, 1, 1})},
        {"mirror in YZ", AcGeMatrix3d::mirroring({2, 0, 0}, AcGeVector3d::kXAxis)},
        {"mirror in a tilted plane", AcGeMatrix3d::mirroring({1, 1, 1}, kTilted)},
        {"mirror in XY", AcGeMatrix3d::mirroring({0, 0, 1}, AcGeVector3d::kZAxis)},
        {"turn, mirror and scale", AcGeMatrix3d::scaling(0.5) *
                                       AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d::kYAxis) *
                                       AcGeMatrix3d::rotation(1.2, kTilted)},
    };
}

inline const AcGeMatrix3d kUneven = AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1));

} // namespace vndk::test
