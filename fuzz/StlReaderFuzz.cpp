// Any bytes as an STL file: header and triangles must be those of the plain rules.

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "Facet/PlainStlReader.h"
#include "Facet/StlFile.h"
#include "Support/TempFile.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const KM::Test::TempFile file;
    file.Write(std::string(reinterpret_cast<const char*>(data), size));

    char header[81];
    const std::unique_ptr<KM::STLReader, decltype(&KmSTLClose)> reader(KmSTLOpen(file.Name().c_str(), header),
                                                                       &KmSTLClose);
    KM::Test::PlainStlReader plain(file.Name());
    Require(reader != nullptr && plain.ReadHeader() == header);
    Require(KM::Test::SameBits(KM::Test::ReadAll(*reader), KM::Test::ReadAll(plain)));
    return 0;
}
