#include <cmath>

#include "KmTools.h"

int KmBndBoxInit(int dimensions, double box[]) {
    constexpr double farthest = 1e20;
    if (dimensions < 1 || box == nullptr) return 1;
    for (int i = 0; i < dimensions; ++i) {
        box[2 * i] = farthest;
        box[2 * i + 1] = -farthest;
    }
    return 0;
}

int KmBndBoxGrowPnt(int dimensions, const double box[], const double point[], double grown[]) {
    if (dimensions < 1 || box == nullptr || point == nullptr || grown == nullptr) return 1;
    for (int i = 0; i < dimensions; ++i) {
        const double at = point[i];
        const double min = box[2 * i];
        const double max = box[2 * i + 1];
        // The bounds of an empty box are no limits: a point beyond 1e20 has to become both of them.
        const bool isEmpty = min > max && !std::isnan(at);
        grown[2 * i] = isEmpty || at < min ? at : min;
        grown[2 * i + 1] = isEmpty || at > max ? at : max;
    }
    return 0;
}
