#include <string>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Support/TempFolder.h"

namespace KM::Test {
namespace {

/// Also one that lies on the limits of slabs, and one of strange sizes.
Soup InputOf(const std::string& name) {
    if (name == "bumpy sphere") return BumpySphereFacets(20).AsSoup();
    Numbers next(5);
    Soup soup;
    for (int i = 0; i < 3000; ++i) {
        if (name == "hostile") soup.push_back(next.HostilePoint(true));
        else soup.push_back({1.0 * next.Below(13), 1.0 * next.Below(13), 1.0 * next.Below(13)});
    }
    return soup;
}

void Write(const std::string& name, const Soup& soup) {
    std::FILE* file = STLOpenWriter(name.c_str(), false);
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) STLWriteFacet(file, soup[i], soup[i + 1], soup[i + 2], false);
    STLCloseWriter(file, static_cast<int>(soup.size() / 3), false);
}

/// What a reader of the slab gets; the bits of the normals, which no reader looks at, depend on those of NaNs.
void AddSlab(Digest& digest, const std::string& name) {
    STLReader reader(name);
    double nine[9] = {};
    while (reader.Read(nine))
        for (const double x : nine) digest.Add(x);
}

}  // namespace

void PrintDecompositionDigests() {
    for (const std::string name : {"bumpy sphere", "lattice", "hostile"}) {
        const TempFolder temp;
        Write(temp / "part.stl", InputOf(name));
        Digest digest;
        for (const int axes : {1, 2, 4})
            for (const double overlap : {0.0, 0.3, -0.3})
                for (const std::string& slab : DomainDecomposition(temp / "part.stl", 12, axes, overlap, ""))
                    AddSlab(digest, slab);
        Print(name + ": slabs", digest);
    }
}

}  // namespace KM::Test
