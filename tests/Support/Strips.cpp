#include "Support/Strips.h"

#include <algorithm>

namespace KM::Test {

std::vector<int> NodesInReadingOrder(const StripFan& strip) {
    std::vector<int> nodes(strip.nodes.begin(), strip.nodes.end());
    if (strip.kind == 2) std::reverse(nodes.begin(), nodes.end());
    return nodes;
}

std::vector<std::array<int, 3>> TrianglesOfStrip(std::span<const int> nodes) {
    std::vector<std::array<int, 3>> triangles;
    for (std::size_t i = 0; i + 2 < nodes.size(); ++i) {
        std::array<int, 3> triangle{nodes[i], nodes[i + 1], nodes[i + 2]};
        if (i % 2 == 1) std::swap(triangle[0], triangle[1]);
        std::rotate(triangle.begin(), std::min_element(triangle.begin(), triangle.end()), triangle.end());
        triangles.push_back(triangle);
    }
    return triangles;
}

}  // namespace KM::Test
