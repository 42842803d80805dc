#include "views/mesh_skin.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvokin {

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr double kMaxSlant = 75 * kRadians;

// Twice the signed area: positive when the outline turns anticlockwise.
double signedArea(const OutlinePoints& o) {
    double a = 0;
    for (size_t i = 0; i + 1 < o.size(); ++i) a += o[i].x * o[i + 1].y - o[i + 1].x * o[i].y;
    if (!o.empty()) a += o.back().x * o.front().y - o.front().x * o.back().y;
    return a;
}

// An airfoil file runs anticlockwise (trailing edge, upper surface, nose,
// lower surface); the loft's winding faces out for that turn, so an outline
// written the other way round is reversed.
OutlinePoints anticlockwise(const OutlinePoints& o) {
    if (signedArea(o) >= 0) return o;
    return OutlinePoints(o.rbegin(), o.rend());
}

}  // namespace

std::vector<MeshTriangle> LoftFaces(int rowLength, int rowCount) {
    std::vector<MeshTriangle> faces;
    const int P = rowLength, last = rowLength * rowCount;
    for (int i = 1; i <= rowCount; ++i) {
        for (int j = 0; j + 1 < P; ++j) {
            const MeshTriangle t1{P * (i - 1) + j, P * i + j, P * i + j + 1};
            const MeshTriangle t2{P * (i - 1) + j, P * i + j + 1, P * (i - 1) + j + 1};
            for (const MeshTriangle& t : {t1, t2}) {
                if (std::max({t.a, t.b, t.c}) < last) faces.push_back(t);
            }
        }
    }
    return faces;
}

MeshPoint PanelPoint(const PanelShape& p, double x, double y, double u) {
    const double chord = p.rootChord + (p.tipChord - p.rootChord) * u;
    const double twist = (p.rootTwist + (p.tipTwist - p.rootTwist) * u) * kRadians;
    const double cx = chord * x, cy = chord * y;
    const double along = cx * std::cos(twist) + cy * std::sin(twist);
    const double across = -cx * std::sin(twist) + cy * std::cos(twist);
    // Span line s = (0, sin d, -cos d); the section's "up" n = (0, cos d, sin d).
    // A point across the chord slides along s by across x tan(d - roll) to
    // reach the end plane; the slant is kept short of a right angle.
    const double d = p.dihedral * kRadians;
    const double roll = (p.rootRoll + (p.tipRoll - p.rootRoll) * u) * kRadians;
    const double slant = std::clamp(d - roll, -kMaxSlant, kMaxSlant);
    const double span = p.length * u + across * std::tan(slant);
    return {p.root.x + p.sweep * u + along, p.root.y + across * std::cos(d) + span * std::sin(d),
            p.root.z + across * std::sin(d) - span * std::cos(d)};
}

SkinMesh BuildPanelSkin(const OutlinePoints& rootOutline, const OutlinePoints& tipOutline, const PanelShape& p) {
    SkinMesh m;
    if (rootOutline.size() != tipOutline.size() || rootOutline.size() < 3) return m;
    const OutlinePoints root = anticlockwise(rootOutline), tip = anticlockwise(tipOutline);
    m.vertices.reserve(root.size() * 2);
    for (const OutlinePoint& q : root) m.vertices.push_back(PanelPoint(p, q.x, q.y, 0.0));
    for (const OutlinePoint& q : tip) m.vertices.push_back(PanelPoint(p, q.x, q.y, 1.0));
    m.faces = LoftFaces(static_cast<int>(root.size()), 2);
    return m;
}

SkinMesh BuildBodySkin(const OutlinePoints& section, const std::vector<BodyStation>& stations, bool closedFront,
                       bool closedBack) {
    SkinMesh m;
    if (section.size() < 3 || stations.empty()) return m;
    // Along +z the skin faces out when the section turns clockwise.
    OutlinePoints o = anticlockwise(section);
    std::reverse(o.begin(), o.end());
    auto addRow = [&](const BodyStation& st, bool collapsed) {
        for (const OutlinePoint& q : o) {
            const double x = collapsed ? 0.0 : st.width * (q.x - 0.5);
            m.vertices.push_back({x, st.yCentre + st.height * q.y, st.z});
        }
    };
    if (closedFront) addRow(stations.front(), true);
    for (const BodyStation& st : stations) addRow(st, false);
    if (closedBack) addRow(stations.back(), true);
    const int P = static_cast<int>(o.size());
    m.faces = LoftFaces(P, static_cast<int>(m.vertices.size()) / P);
    return m;
}

SkinMesh Mirrored(const SkinMesh& m) {
    SkinMesh r = m;
    for (MeshPoint& v : r.vertices) v.z = -v.z;
    for (MeshTriangle& t : r.faces) std::swap(t.b, t.c);
    return r;
}

}  // namespace tarvokin
