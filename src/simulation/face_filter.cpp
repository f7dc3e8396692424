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

}  // namespace

FaceFilter::FaceFilter(const Collider& newBody, float newTravel)
    : body(newBody),
      scale(1.0f / body.radii.x, 1.0f / body.radii.y, 1.0f / body.radii.z),
      origin(body.sweepOrigin),
      travel(newTravel),
      originSize(std::fabs(origin.x) + std::fabs(origin.y) + std::fabs(origin.z)),
      ordinary(travel > 1e-3f && travel < 1.9f && originSize < 1e4f) {}

void FaceFilter::Load(const float* vertices, const std::int32_t* faces, const std::int32_t* ids,
                      std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        const std::int32_t* face = faces + 3 * static_cast<std::ptrdiff_t>(ids[i]);
        for (int corner = 0; corner < 3; corner++) {
            const float* vertex = vertices + 3 * static_cast<std::ptrdiff_t>(face[corner]);
            x[corner][i] = vertex[0];
            y[corner][i] = vertex[1];
            z[corner][i] = vertex[2];
        }
    }
    FindFar();
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
    // Where a contact was found, only nearer ones count any more. A distance that is NaN ends nothing.
    const float path =
        body.foundCollision != 0 && body.nearestDistance < travel ? body.nearestDistance : travel;
    const Vector displacement = body.sweepVelocity * (path / travel);
    // Corners and edges as seen from the start of the sweep.
    const Vector corners[3] = {Corner(i, 0) * scale - origin, Corner(i, 1) * scale - origin,
                               Corner(i, 2) * scale - origin};
    const Vector e1 = corners[1] - corners[0];
    const Vector e2 = corners[2] - corners[0];
    const float size = 1.5f * std::sqrt(LengthSquared(e1) + LengthSquared(e2));  // above the longest edge
    const float reach = path + 1.0f;
    // What a corner, an edge or a height is off, here and in the exact steps together: seven roundings of a
    // 17-millionth each at most. From there to the limits below a difference grows by 1.7 at most.
    const float rounding = 2e-6f * (originSize + size + reach);

    const Vector n = e1.Cross(e2);
    const float nLength = std::sqrt(LengthSquared(n));
    const float nRounding = size * rounding;
    // A normal that may owe its direction to rounding proves nothing, nor do products that may overflow.
    if (!(nLength > 2.0f * nRounding && nLength > 1e-12f && size < 1e6f)) {
        return false;
    }

    // Every contact touches the sphere somewhere on its way, so it can't be that the sphere stays on one
    // side of the plane all the way. (A sunken sphere reports a contact without touching, but only with its
    // centre less than 1.0 above the plane and less than path - 1.0 below.)
    const float start = -corners[0].Dot(n);
    const float end = start + displacement.Dot(n);
    const float height = Larger(std::min(start, end), -Larger(start, end));  // least one, from either side
    const float heightRounding = nLength * rounding + nRounding * (size + reach);
    if (height > nLength * 1.001f + heightRounding) {
        return true;
    }

    // The foot of the sphere's centre on the plane runs along a segment, and no point of the plane that the
    // sphere touches is farther from there than this. Every contact is such a point of the triangle, an
    // edge of it, or the foot itself. That may lie beside the triangle by less than a hundredth of its
    // size, since the sum of angles is a sum only within a tolerance.
    const float least = Larger(height - heightRounding, 0.0f) / nLength;
    const float aside =
        Larger(std::sqrt(1.0021f - std::min(least * least, 1.002f)), 0.02f * size) + rounding;
    for (int corner = 0; corner < 3; corner++) {
        const Vector edge = corners[(corner + 1) % 3] - corners[corner];
        const Vector outward = edge.Cross(n);
        const float from = -corners[corner].Dot(outward);
        const float outside = std::min(from, from + displacement.Dot(outward));
        const float edgeLength = std::sqrt(LengthSquared(edge));
        const float outsideRounding =
            rounding * ((size + reach) * (nLength + size * edgeLength) + edgeLength * nLength);
        if (outside > aside * edgeLength * nLength * 1.001f + outsideRounding) {
            return true;
        }
    }
    return false;
}
