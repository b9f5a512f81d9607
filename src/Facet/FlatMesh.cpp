#include "Facet/FlatMesh.h"

std::FILE* KgApplDbgFileDesc = nullptr;
std::int32_t KgApplDbgGroup = 0;
std::int32_t KgApplDbgLevel = 0;
std::int32_t KgApplFacetDecimate = 0;

int KmPinInit(int, int) {
    KgApplDbgFileDesc = stderr;
    KgApplDbgGroup = 0;
    KgApplDbgLevel = 0;
    KgApplFacetDecimate = 0;
    return 0;
}
