#ifndef LMK_VECTOR3_H
#define LMK_VECTOR3_H

namespace lmk {

// A point or a direction, in metres where it is a point.
struct Vector3 {
    constexpr Vector3() = default;
    constexpr Vector3(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

} // namespace lmk

#endif
