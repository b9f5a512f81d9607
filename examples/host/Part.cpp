#include "Part.h"

#include <cmath>
#include <functional>
#include <stdexcept>
#include <unordered_map>

namespace {

using Point = KM::TPoint<double>;

struct PointHash {
    std::size_t operator()(const Point& p) const {
        const std::hash<double> hash;
        return (hash(p.X) * 31 + hash(p.Y)) * 0x9E3779B97F4A7C15u + hash(p.Z);
    }
};

bool IsFinite(const Point& p) { return std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z); }

/// Gathers triangles with loose corners into records with shared ones. Only corners of the very same coordinates are one.
class PartBuilder {
public:
    void Add(const Point& a, const Point& b, const Point& c) {
        if (!IsFinite(a) || !IsFinite(b) || !IsFinite(c) || a == b || b == c || c == a) {
            ++part_.leftOut;
            return;
        }
        part_.facets.push_back({{Node(a), Node(b), Node(c)}, 0});
    }

    Part Take() {
        part_.diagonal = Length(Point(box_[1] - box_[0], box_[3] - box_[2], box_[5] - box_[4]));
        return std::move(part_);
    }

private:
    int Node(const Point& p) {
        const auto [entry, isNew] = nodes_.try_emplace(p, static_cast<int>(part_.events.size()));
        if (isNew) {
            KsEvent event{};
            event.x = p.X;
            event.y = p.Y;
            event.z = p.Z;
            part_.events.push_back(event);
            KmBndBoxGrowPnt(3, box_, &p.X, box_);
        }
        return entry->second;
    }

    Part part_;
    std::unordered_map<Point, int, PointHash> nodes_;
    double box_[6] = {1e20, -1e20, 1e20, -1e20, 1e20, -1e20};
};

}  // namespace

Part ReadPart(const std::string& file) {
    const std::string fault = KM::STLFault(file);
    if (!fault.empty()) throw std::runtime_error(fault);
    KM::STLReader reader(file);
    if (!reader.IsOpen()) throw std::runtime_error("cannot be opened");
    PartBuilder builder;
    double v[9];
    while (reader.Read(v)) builder.Add(Point(v[0], v[1], v[2]), Point(v[3], v[4], v[5]), Point(v[6], v[7], v[8]));
    Part part = builder.Take();
    if (part.facets.empty()) throw std::runtime_error("holds no triangles");
    if (!std::isfinite(part.diagonal)) throw std::runtime_error("is too large: its diagonal is no number");
    return part;
}
