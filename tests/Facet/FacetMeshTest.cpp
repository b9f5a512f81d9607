#include "Facet/FacetMesh.h"

#include <gtest/gtest.h>

#include "Facet/HostileFacets.h"
#include "Facet/PlainLevels.h"
#include "Support/MeshChecks.h"

namespace KM {
namespace {

using namespace KM::Test;

PIN MeshOf(const IndexedFacets& facets) {
    const std::vector<KsEvent> events = EventsOf(facets);
    const std::vector<KsShadingfacet> records = RecordsOf(facets);
    return FacetMesh(static_cast<int>(events.size()), events.data(), static_cast<int>(records.size()), records.data());
}

TEST(FacetMesh, IsThatOfThePlainRuleOnAnyInput) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const IndexedFacets facets = HostileFacets(seed);
        EXPECT_TRUE(SameRecords(MeshOf(facets), PlainFacetMesh(facets)));
    }
}

TEST(FacetMesh, KeepsEventsThatNobodyUsesAndMergesNone) {
    const TPoint<double> p(1, 2, 3);
    const PIN mesh = MeshOf({{p, p, p, p, p}, {4, 0, 2}});
    EXPECT_EQ(mesh.points.size(), 5u);
    EXPECT_EQ(mesh.p2e, std::vector<std::int32_t>(5, -1));
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 4}, {2, -1, 0}, {0, -1, 2}}));
}

TEST(FacetMesh, DropsFacetsWithEqualNodes) {
    EXPECT_TRUE(MeshOf({{{}, {}, {}}, {0, 0, 1, 2, 1, 2, 1, 0, 0}}).edges.empty());
}

TEST(FacetMesh, LeavesFacetsOfInconsistentWindingApart) {
    // Both run 0-1.
    const PIN mesh = MeshOf({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, -1, 0}}, {0, 1, 2, 0, 1, 3}});
    EXPECT_EQ(OrphanCount(mesh), 6);
}

TEST(FacetMesh, OfThreeFacetsOnAnEdgeTheEarliestFit) {
    const PIN mesh = MeshOf({{{}, {}, {}, {}, {}}, {0, 1, 2, 1, 0, 3, 1, 0, 4}});
    EXPECT_EQ(mesh.edges[0].TE, 3);
    EXPECT_EQ(mesh.edges[6].TE, -1);
}

TEST(FacetRecords, AreRefusedWhereTheyNameNothing) {
    const KsEvent events[3] = {};
    KsShadingfacet facet{{0, 1, 2}, 0};
    EXPECT_TRUE(AreFacetRecordsValid(3, events, 1, &facet));
    EXPECT_TRUE(AreFacetRecordsValid(0, nullptr, 0, nullptr));
    EXPECT_FALSE(AreFacetRecordsValid(-1, events, 0, nullptr));
    EXPECT_FALSE(AreFacetRecordsValid(3, events, -1, &facet));
    EXPECT_FALSE(AreFacetRecordsValid(3, nullptr, 1, &facet));
    EXPECT_FALSE(AreFacetRecordsValid(3, events, 1, nullptr));
    EXPECT_FALSE(AreFacetRecordsValid(2, events, 1, &facet));
    facet.node[1] = -1;
    EXPECT_FALSE(AreFacetRecordsValid(3, events, 1, &facet));
}

}  // namespace
}  // namespace KM
