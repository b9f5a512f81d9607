// A host in plain C. It is linked with nothing of the library: it loads it by its path, finds the flat functions under
// their bare names, builds a cube, reads it back as points and as strips, and frees everything.
//
//     c_host path/to/libkm.so

#include <dlfcn.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "KmTools.h"  // the host's own side: its list type

// The records of the interface, as C lays them out.

typedef struct Interval {
    double min;
    double max;
} Interval;

typedef struct StripNode {
    struct StripNode* low;
    struct StripNode* high;
    Interval box[3];
    int32_t withCounts;
    int32_t stripCount;
    int32_t capacity;
    int8_t axis;
    double split;
    KmList* strips;  // strip after strip: the number of its nodes, then the nodes
} StripNode;

typedef struct Mesh Mesh;  // a handle; nobody looks inside

typedef struct Flat {
    int (*init)(int, int);
    Mesh* (*create)(void);
    void (*destroy)(Mesh*);
    void (*addTriangles)(Mesh*, int pointCount, float* xyz, int triangleCount, int* triples);
    int (*extractPoints)(Mesh*, int* count, float** points);
    int (*toHierarchy)(Mesh*, const Interval* box, StripNode** root);
    int (*freeHierarchy)(StripNode**);
    int (*listItems)(KmList*, void** items);
    int (*freeMemory)(void** block);
    int32_t* decimate;
} Flat;

static bool Fail(const char* what) {
    fprintf(stderr, "c_host: %s failed\n", what);
    return false;
}

static bool FindAll(void* library, Flat* flat) {
    const struct {
        const char* name;
        void* slot;
    } wanted[] = {
        {"KmPinInit", &flat->init},
        {"SPINCreate", &flat->create},
        {"SPINDestroy", &flat->destroy},
        {"AddTrianglesSPIN", &flat->addTriangles},
        {"PINExtractPoints", &flat->extractPoints},
        {"PINToHier", &flat->toHierarchy},
        {"KmHierStripFree", &flat->freeHierarchy},
        {"KmListGetArray", &flat->listItems},
        {"KmMemFree", &flat->freeMemory},
        {"KgApplFacetDecimate", &flat->decimate},
    };
    for (size_t i = 0; i < sizeof wanted / sizeof *wanted; ++i) {
        void* const symbol = dlsym(library, wanted[i].name);
        if (symbol == NULL) {
            fprintf(stderr, "c_host: %s is not in the library\n", wanted[i].name);
            return false;
        }
        // Copied, since C has no conversion from an object pointer to a function pointer.
        memcpy(wanted[i].slot, &symbol, sizeof symbol);
    }
    return true;
}

enum { CubePoints = 8, CubeTriangles = 12 };

static const Interval CubeBox[3] = {{0, 1}, {0, 1}, {0, 1}};

static void AddCube(const Flat* flat, Mesh* mesh) {
    float xyz[3 * CubePoints] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
    int triples[3 * CubeTriangles] = {0, 2, 1, 0, 3, 2, 4, 5, 6, 4, 6, 7, 0, 1, 5, 0, 5, 4,
                                      1, 2, 6, 1, 6, 5, 2, 3, 7, 2, 7, 6, 3, 0, 4, 3, 4, 7};
    flat->addTriangles(mesh, CubePoints, xyz, CubeTriangles, triples);
}

static bool ShowPoints(const Flat* flat, Mesh* mesh) {
    int count = 0;
    float* points = NULL;
    if (flat->extractPoints(mesh, &count, &points) != 0) return Fail("PINExtractPoints");
    printf("%d points:", count);
    for (int i = 0; i < count; ++i)
        printf(" (%g, %g, %g)", (double)points[3 * i], (double)points[3 * i + 1], (double)points[3 * i + 2]);
    printf("\n");
    void* block = points;
    if (flat->freeMemory(&block) != 0) return Fail("KmMemFree");
    return count == CubePoints || Fail("the check of the number of points");
}

typedef struct Totals {
    int nodes;
    int strips;
    int triangles;
} Totals;

static bool AddStripsOf(const Flat* flat, const StripNode* node, Totals* totals) {
    void* items = NULL;
    if (flat->listItems(node->strips, &items) != 0) return Fail("KmListGetArray");
    const int32_t* word = items;
    const int32_t* const end = word + node->strips->count;
    for (int i = 0; i < node->stripCount; ++i) {
        if (word == end || *word < 3 || *word >= end - word) return Fail("the walk of a strip");
        totals->strips += 1;
        totals->triangles += *word - 2;  // any three consecutive nodes are one
        word += 1 + *word;
    }
    return word == end || Fail("the walk of the strips");
}

static bool AddHierarchy(const Flat* flat, const StripNode* node, Totals* totals) {
    if (node == NULL) return true;
    totals->nodes += 1;
    return AddStripsOf(flat, node, totals) && AddHierarchy(flat, node->low, totals) &&
           AddHierarchy(flat, node->high, totals);
}

static bool ShowStrips(const Flat* flat, Mesh* mesh) {
    StripNode* root = NULL;
    Totals totals = {0, 0, 0};
    bool done = flat->toHierarchy(mesh, CubeBox, &root) == 0 || Fail("PINToHier");
    done = done && AddHierarchy(flat, root, &totals);
    if (done) printf("%d triangles in %d strips, filed in %d boxes\n", totals.triangles, totals.strips, totals.nodes);
    if (done && totals.triangles != CubeTriangles) done = Fail("the check of the number of triangles");
    // What was built before a failure is the host's, too.
    if (flat->freeHierarchy(&root) != 0) done = Fail("KmHierStripFree");
    return done;
}

static bool Run(const Flat* flat) {
    if (flat->init(0, 0) != 0) return Fail("KmPinInit");
    printf("KgApplFacetDecimate is %d\n", (int)*flat->decimate);
    Mesh* const mesh = flat->create();
    if (mesh == NULL) return Fail("SPINCreate");
    AddCube(flat, mesh);
    const bool done = ShowPoints(flat, mesh) && ShowStrips(flat, mesh);
    flat->destroy(mesh);
    if (done) printf("all freed\n");
    return done;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: c_host <path of the library>\n");
        return EXIT_FAILURE;
    }
    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == NULL) {
        fprintf(stderr, "c_host: cannot load the library: %s\n", dlerror());
        return EXIT_FAILURE;
    }
    Flat flat;
    const bool done = FindAll(library, &flat) && Run(&flat);
    if (dlclose(library) != 0) {
        fprintf(stderr, "c_host: cannot unload the library: %s\n", dlerror());
        return EXIT_FAILURE;
    }
    return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
