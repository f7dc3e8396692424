#include "simulation/face_filter.h"

#include <algorithm>
#include <cmath>

namespace {

float LengthSquared(Vector v) {
    return v.Dot(v);
}

float Larger(float a, float b) {
    return a > b ? a : b;
}

/// Whether the span of three coordinates lies beyond the limit on one side of zero.
bool IsBeyond(float a, float b, float c, float limit) {
    return std::min({a, b, c}) > limit || std::max({a, b, c}) < -limit;
}

}  // namespace

FaceFilter::FaceFilter(const Collider& body, float newTravel)
    : scale(1.0f / body.radii.x, 1.0f / body.radii.y, 1.0f / body.radii.z),
      origin(body.sweepOrigin),
      displacement(body.sweepVelocity),
      travel(newTravel),
      originSize(std::fabs(origin.x) + std::fabs(origin.y) + std::fabs(origin.z)),
      ordinary(travel > 1e-3f && travel < 1.9f && originSize < 1e4f) {}

void FaceFilter::Load(const float* vertices, const std::int32_t* faces, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        SetCorners(i, vertices, faces + 3 * i);
    }
    FindFar();
}

void FaceFilter::Load(const float* vertices, const std::int32_t* faces, const std::int32_t* ids,
                      std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        SetCorners(i, vertices, faces + 3 * static_cast<std::ptrdiff_t>(ids[i]));
    }
    FindFar();
}

void FaceFilter::SetCorners(std::int32_t i, const float* vertices, const std::int32_t* face) {
    for (int corner = 0; corner < 3; corner++) {
        const float* vertex = vertices + 3 * static_cast<std::ptrdiff_t>(face[corner]);
        x[corner][i] = vertex[0];
        y[corner][i] = vertex[1];
        z[corner][i] = vertex[2];
    }
}

void FaceFilter::FindFar() {
    // All lengths are three times as long here, which saves the division of the centroid by three. The
    // bound is distance >= radius + reach. With squares, and without a root, that is
    // distance² - radius² - reach² >= 2 radius reach.
    const Vector toEllipsoid = scale;
    const Vector origin3 = origin * 3.0f;
    const float reach = 3.0f * (travel + 1.0f) + 1e-3f * originSize;
    const float reachSquared = reach * reach;
    for (std::int32_t i = 0; i < batchSize; i++) {
        const Vector a = Corner(i, 0) * toEllipsoid;
        const Vector b = Corner(i, 1) * toEllipsoid;
        const Vector c = Corner(i, 2) * toEllipsoid;
        const Vector centroid3 = a + b + c;
        const float distanceSquared = LengthSquared(origin3 - centroid3);
        const float radiusSquared =
            Larger(Larger(LengthSquared(a * 3.0f - centroid3), LengthSquared(b * 3.0f - centroid3)),
                   LengthSquared(c * 3.0f - centroid3));
        const float rest = distanceSquared * 0.999f - (radiusSquared + reachSquared);
        // The upper limit keeps the squares from overflowing.
        far[i] = static_cast<int>(rest >= 0.0f) &
                 static_cast<int>(rest * rest >= 4.0f * reachSquared * radiusSquared) &
                 static_cast<int>(distanceSquared < 1e18f);
    }
}

bool FaceFilter::CantTouch(std::int32_t i) const {
    if (!ordinary) {
        return false;
    }
    // Corners and edges as seen from the start of the sweep.
    const Vector a = Corner(i, 0) * scale - origin;
    const Vector b = Corner(i, 1) * scale - origin;
    const Vector c = Corner(i, 2) * scale - origin;
    const Vector e1 = b - a;
    const Vector e2 = c - a;
    const float size = 1.5f * std::sqrt(LengthSquared(e1) + LengthSquared(e2));  // above the longest edge
    const float reach = travel + 1.0f;
    const float rounding = 1e-5f * (originSize + size + reach);

    const Vector n = e1.Cross(e2);
    const float nLength = std::sqrt(LengthSquared(n));
    const float nRounding = size * rounding;
    // A normal that may owe its direction to rounding proves nothing.
    if (!(nLength > 2.0f * nRounding && nLength > 1e-12f)) {
        return false;
    }

    // Every contact lies within reach of the origin, and in the triangle or, as the sum of angles is only
    // a sum within a tolerance, less than a tenth of its size beside it.
    const float limit = reach * 1.001f + 0.1f * size + rounding;
    if (IsBeyond(a.x, b.x, c.x, limit) || IsBeyond(a.y, b.y, c.y, limit) ||
        IsBeyond(a.z, b.z, c.z, limit)) {
        return true;
    }
    // And every contact touches the sphere somewhere on its way, so it can't be that the sphere stays on
    // one side of the plane all the way. (A sunken sphere reports a contact without touching, but only
    // with its centre less than 1.0 above the plane and less than travel - 1.0 below.)
    const float start = -a.Dot(n);
    const float end = start + displacement.Dot(n);
    const float planeLimit = nLength * (1.001f + rounding) + 2.0f * nRounding * (size + reach);
    return std::min(start, end) > planeLimit || std::max(start, end) < -planeLimit;
}
