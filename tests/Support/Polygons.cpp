#include "Support/Polygons.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Support/HostilePoints.h"

namespace KM::Test {
namespace {

using P = TPoint<double>;

P Polar(double radius, double angle) { return P(radius * std::cos(angle), radius * std::sin(angle), 0.0); }

double Turns(double share) { return 2.0 * std::numbers::pi * share; }

}  // namespace

Outline Circle(int count) {
    Outline outline;
    for (int i = 0; i < count; ++i) outline.push_back(Polar(100.0, Turns(static_cast<double>(i) / count)));
    return outline;
}

Outline Spiral(int count, int turns) {
    const int half = count / 2;
    Outline outline;
    const auto at = [&](int i, double offset) {
        const double share = static_cast<double>(i) / half;
        return Polar(2.0 + turns * share + offset, Turns(turns * share));
    };
    for (int i = 0; i < half; ++i) outline.push_back(at(i, 0.5));
    for (int i = half; i-- > 0;) outline.push_back(at(i, 0.0));
    return outline;
}

Outline SpikyStar(int count) {
    Outline outline;
    for (int i = 0; i < count; ++i)
        outline.push_back(Polar(i % 2 == 0 ? 100.0 : 30.0, Turns(static_cast<double>(i) / count)));
    return outline;
}

Outline Digitised(int count, double step) {
    Outline outline;
    for (int i = 0; i < count; ++i) {
        const double angle = Turns(static_cast<double>(i) / count);
        const double waves =
            1.0 + 0.2 * std::sin(5.0 * angle) + 0.05 * std::sin(37.0 * angle) + 0.004 * std::sin(count / 11.0 * angle);
        const P p = Polar(count / 10.0 * waves, angle);
        outline.push_back(P(std::round(p.X) * step, std::round(p.Y) * step, 0.0));
    }
    return outline;
}

Outline Comb(int teeth) {
    Outline outline{P(0, -1, 0), P(2.0 * teeth, -1, 0)};
    for (int i = teeth; i-- > 0;) {
        const double x = 2.0 * i;
        for (const P& p : {P(x + 2, 0, 0), P(x + 2, 9, 0), P(x + 1, 9, 0), P(x + 1, 0, 0)}) outline.push_back(p);
    }
    return outline;
}

Outline KeyHoles(int holes, double gap) {
    const double cell = 10.0 / holes;
    Outline outline{P(0, 0, 0), P(10, 0, 0), P(10, 10, 0), P(0, 10, 0)};
    // From row to row down the left side. Upper halves of holes lie on the way in, lower ones on the way out.
    for (int row = holes; row-- > 0;) {
        Outline back;
        const double y = (row + 0.5) * cell;
        const auto add = [&](Outline& way, double left, double right, double level, double rim) {
            way.insert(way.end(), {P(left, level, 0), P(left, rim, 0), P(right, rim, 0), P(right, level, 0)});
        };
        outline.push_back(P(0, y, 0));
        for (int i = 0; i < holes; ++i) {
            const double left = (i + 0.25) * cell;
            const double right = (i + 0.75) * cell;
            add(outline, left, right, y, y + 0.25 * cell);
            add(back, left, right, y - gap, y - 0.25 * cell);
        }
        outline.insert(outline.end(), back.rbegin(), back.rend());
        outline.push_back(P(0, y - gap, 0));
    }
    return outline;
}

Outline ThereAndBack(int count) {
    Outline outline;
    for (int i = 0; i < count; ++i) {
        const int place = std::min(i, count - i);
        outline.push_back(P(0.01 * place, std::sin(0.1 * place), 0.0));
    }
    return outline;
}

Outline RandomOutline(unsigned seed, int count) {
    HostilePoints points(seed);
    Outline outline;
    for (int i = 0; i < count; ++i) outline.push_back(points());
    return outline;
}

Outline StarShaped(unsigned seed, int count) {
    HostilePoints random(seed);
    Outline outline;
    for (int i = 0; i < count; ++i)
        outline.push_back(Polar(random.Between(1.0, 10.0), Turns(static_cast<double>(i) / count)));
    return outline;
}

Outline Reversed(Outline outline) {
    std::reverse(outline.begin(), outline.end());
    return outline;
}

}  // namespace KM::Test
