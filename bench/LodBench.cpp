// Levels of detail on a bumpy sphere, in walk order and shuffled.
// Usage: LodBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

struct Records {
    std::vector<KsEvent> events;
    std::vector<KsShadingfacet> facets;
};

Records RecordsOf(const Test::IndexedFacets& source) {
    Records records;
    for (const TPoint<double>& p : source.points) {
        KsEvent& event = records.events.emplace_back();
        event.x = p.X;
        event.y = p.Y;
        event.z = p.Z;
    }
    records.facets.resize(source.triples.size() / 3);
    for (std::size_t i = 0; i < source.triples.size(); ++i) records.facets[i / 3].node[i % 3] = source.triples[i];
    return records;
}

/// Gives the stream back to the host when the clock has stopped.
struct Stream {
    explicit Stream(const KsLodsTRI& from) : record(from) {}
    Stream(const Stream&) = delete;
    ~Stream() {
        void* block = record.data;
        KmMemFree(&block);
    }
    KsLodsTRI record;
};

Stream Decimate(const Records& records, std::span<const double> tolerances) {
    return Stream(KmTriDecimate(static_cast<int>(records.events.size()), records.events.data(),
                                static_cast<int>(records.facets.size()), records.facets.data(), tolerances));
}

void RemarkLevels(const Report& report, const KsLodsTRI& stream, double triangles) {
    const std::int32_t* level = stream.data;
    for (int i = 0; i < stream.lodCount; ++i) {
        // A strip of n nodes takes n + 1 words and has n - 2 triangles.
        const int left = level[1] - 3 - 3 * level[2];
        char line[128];
        std::snprintf(line, sizeof line, "level %d: %d triangles, %.1f %%, %.3f words a triangle", i, left,
                      100.0 * left / triangles, static_cast<double>(level[1]) / left);
        report.Remark(line);
        level += level[1];
    }
}

void MeasureLevels(const Test::IndexedFacets& facets, int segments, const std::string& order) {
    Report report("levels of detail, " + order);
    const Records records = RecordsOf(facets);
    const double triangles = static_cast<double>(records.facets.size());
    // What leaves about 10 % at a million triangles; the error of a chord grows with the square of its length.
    const double scale = (354.0 / segments) * (354.0 / segments);
    const std::vector<double> tolerances{0.0012 * scale, 0.003 * scale, 0.008 * scale, 0.02 * scale};

    KgApplFacetDecimate = 0;
    report.Measure({"KmTriDecimate, one level", triangles}, [&] { return Decimate(records, tolerances); });
    KgApplFacetDecimate = 1;
    report.Measure({"KmTriDecimate, four levels", triangles}, [&] { return Decimate(records, tolerances); });
    RemarkLevels(report, Decimate(records, tolerances).record, triangles);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int segments = argc > 1 ? std::max(1, std::atoi(argv[1])) : 354;
    const KM::Test::IndexedFacets facets = KM::Test::BumpySphereFacets(segments);
    KM::Bench::MeasureLevels(facets, segments, "in order");
    KM::Bench::MeasureLevels(KM::Test::Shuffled(facets, 1), segments, "shuffled");
}
