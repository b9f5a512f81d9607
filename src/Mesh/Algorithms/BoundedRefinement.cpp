#include "Mesh/Algorithms/BoundedRefinement.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "Mesh/Algorithms/RefinementRounds.h"
#include "Mesh/Algorithms/RefinementSize.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

void Report(const std::string& what) { Verbose::WriteMessage_1(Verbose::EMessageType::Error, "Refine: " + what); }

std::string TakesTooMany(double maxLength, std::int64_t mostTriangles) {
    return "a length of " + NumberText(maxLength) + " takes more than " + std::to_string(mostTriangles) +
           " new triangles";
}

bool HasIndices(const PIN& mesh, std::int64_t newEdges) {
    return newEdges <= std::numeric_limits<std::int32_t>::max() - static_cast<std::int64_t>(mesh.edges.size());
}

/// How much is done after some rounds, if each is four times as long as the one before.
double Fraction(double rounds, double halvings) {
    return std::min(1.0, (std::exp2(2.0 * rounds) - 1.0) / (std::exp2(2.0 * halvings) - 1.0));
}

/// A watch that tells of rounds rather than of the whole.
std::function<void(double)> WatchOfRound(const std::function<void(double)>& watch, int round, double halvings) {
    if (!watch) return nullptr;
    return [&watch, round, halvings](double fraction) { watch(Fraction(round + fraction, halvings)); };
}

}  // namespace

void RefineWithin(PIN& mesh, double maxLength, std::int64_t mostTriangles, const std::function<void(double)>& watch) {
    RefinementRounds rounds(mesh, maxLength);
    if (rounds.BrokenEdge() != -1)
        return Report("the links of edge " + std::to_string(rounds.BrokenEdge()) + " are broken, nothing is changed");
    if (rounds.Queue().empty()) return;
    const RefinementSize size = SizeOfRefinement(mesh, rounds.Queue(), maxLength);
    if (!(size.leastTriangles <= static_cast<double>(mostTriangles)))
        return Report(TakesTooMany(maxLength, mostTriangles) + ", nothing is changed");

    std::int64_t left = mostTriangles;
    for (int round = 0; !rounds.Queue().empty(); ++round) {
        left -= rounds.MostNewTriangles();
        if (left < 0 || !HasIndices(mesh, rounds.MostNewEdges()))
            return Report(TakesTooMany(maxLength, mostTriangles) + ", and ends with edges that are longer");
        rounds.Run(WatchOfRound(watch, round, size.halvings));
    }
}

}  // namespace KM
