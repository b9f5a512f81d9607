#pragma once

#include <algorithm>
#include <cmath>

// The rules of the solver written out from top to bottom, each as one function without helpers, to compare bits with.

namespace KM::Test {

inline int PlainQuadratic(double a, double b, double c, double* roots) {
    if (1.05367e-8 > std::fabs(a)) {
        roots[0] = -c / b;
        return 1;
    }
    const double disc = b * b - 4.0 * a * c;
    double eps = 1.05367e-8;
    if (b * b * 1e-12 > eps) eps = b * b * 1e-12;
    if (disc < -eps) return 0;
    if (disc < eps) {
        roots[0] = -0.5 * b / a;
        return 1;
    }
    const double s = std::sqrt(disc);
    double r;
    if (s * b < 0.0) r = (s - b) * 0.5 / a;
    else r = (-b - s) * 0.5 / a;
    roots[0] = r;
    roots[1] = c / (r * a);
    if (std::fabs(roots[1]) < 1e-12) roots[1] = 0.0;
    return 2;
}

inline double PlainCubeRoot(double x) {
    if (x == 0.0) return 0.0;
    if (x < 0.0) return -std::exp(std::log(-x) / 3.0);
    return std::exp(std::log(x) / 3.0);
}

inline int PlainCubicMonic(double p, double q, double r, double* roots) {
    const double limit = 1e50;
    if (std::fabs(p) > limit) return roots[0] = -p, 1;
    if (std::fabs(q) > limit) {
        if (q > 0.0) roots[0] = -r / q;
        else roots[0] = -std::sqrt(-q);
        return 1;
    }
    if (std::fabs(r) > limit) return roots[0] = -PlainCubeRoot(r), 1;
    const double s = p / 3.0;
    if (s * s > limit) return roots[0] = -p, 1;
    const double u = (2.0 * (s * s) - q) * s + r;
    if (u > limit || u < -limit) return roots[0] = -p, 1;
    const double v = q / 3.0 - s * s;
    const double w = 2.0 * v;
    const double D = (w * w) * v + u * u;
    if (D >= 0.0) {
        double z;
        if (u <= 0.0) z = (std::sqrt(D) - u) / 2.0;
        else z = (-u - std::sqrt(D)) / 2.0;
        const double c = PlainCubeRoot(z);
        double share = 0.0;
        if (c != 0.0) share = v / c;
        return roots[0] = c - share - s, 1;
    }
    if (D < 0.0 && v >= 0.0) return roots[0] = PlainCubeRoot(u) - s, 1;
    const double t = std::sqrt(-v);
    const double c = std::cos(std::acos(-u / (2.0 * t * (-v))) / 3.0);
    double rest = 1.0 - c * c;
    if (rest < 0.0) rest = 0.0;
    const double g = std::sqrt(rest) * std::sqrt(3.0);
    roots[0] = 2.0 * t * c - s;
    roots[1] = (-c - g) * t - s;
    roots[2] = (g - c) * t - s;
    return 3;
}

inline double PlainCubicOneRoot(double p, double q, double r) {
    double roots[3];
    const int count = PlainCubicMonic(p, q, r, roots);
    const double s = p / 3.0;
    if (count == 3 && s >= 0.0) return roots[1];
    return roots[0];
}

inline int PlainCubic(double a, double b, double c, double d, double* roots) {
    if (1.05367e-8 > std::fabs(a)) return PlainQuadratic(b, c, d, roots);
    return PlainCubicMonic(b / a, c / a, d / a, roots);
}

inline int PlainFerrari(double p, double q, double r, double s, double* roots) {
    const double y = PlainCubicOneRoot(q, p * r - 4.0 * s, (p * p - 4.0 * q) * s + r * r);
    const double ee = p * p / 4.0 - q - y;
    const double ff = y * y / 4.0 - s;
    if (ee < 0.0) return 0;
    if (ff < 0.0) return 0;
    const double E = -(p * y / 4.0 + r / 2.0);
    const double py = p * y;
    const bool isFree = p == 0.0 || y == 0.0 || r == 0.0 || (py > 0.0 && r > 0.0) || (py < 0.0 && r < 0.0);
    double e, f;
    if (isFree && q < 0.0 && y < 0.0 && ee > 0.0) {
        e = std::sqrt(ee);
        f = E / e;
    } else if (isFree && s < 0.0 && ff > 0.0) {
        f = std::sqrt(ff);
        e = E / f;
    } else {
        e = std::sqrt(ee);
        f = std::sqrt(ff);
        if (E < 0.0) f = -f;
    }
    double G = p / 2.0 + e;
    double g = p / 2.0 - e;
    if ((q > 0.0 && y > 0.0) || (q < 0.0 && y < 0.0)) {
        if (e != 0.0) {
            if (p > 0.0) g = (q + y) / G;
            else G = (q + y) / g;
        }
    }
    double H, h;
    if (y == 0.0 && f == 0.0) {
        H = 0.0;
        h = 0.0;
    } else if ((f > 0.0 && y < 0.0) || (f < 0.0 && y > 0.0)) {
        H = -y / 2.0 + f;
        h = s / H;
    } else {
        h = -y / 2.0 - f;
        H = s / h;
    }
    const int count = PlainQuadratic(1.0, G, H, roots);
    return count + PlainQuadratic(1.0, g, h, roots + count);
}

inline int PlainNeumark(double p, double q, double r, double s, double* roots) {
    const double y = PlainCubicOneRoot(-2.0 * q, q * q + p * r - 4.0 * s, (r - p * q) * r + p * p * s);
    const double g1 = p / 2.0;
    const double h1 = (q - y) / 2.0;
    const double dg = p * p - 4.0 * y;
    const double dh = (q - y) * (q - y) - 4.0 * s;
    if (dg < 0.0) return 0;
    if (dh < 0.0) return 0;
    const double N = p * h1 - r;
    const double ag = p * p + 4.0 * y;
    const double ah = s > 0.0 ? (q - y) * (q - y) + 4.0 * s : dh;
    double g2, h2;
    if (y < 0.0 || ah * dg > ag * dh) {
        g2 = std::sqrt(dg) / 2.0;
        h2 = dg == 0.0 ? 0.0 : N / std::sqrt(dg);
    } else {
        h2 = std::sqrt(dh) / 2.0;
        g2 = dh == 0.0 ? 0.0 : N / std::sqrt(dh);
    }
    double H = h1 + h2;
    double h = h1 - h2;
    const double mH = std::fabs(H) < std::fabs(h) ? std::fabs(h) : std::fabs(H);
    if ((h1 > 0.0 && h2 > 0.0) || (h1 < 0.0 && h2 < 0.0)) h = s / H;
    if ((h1 > 0.0 && h2 < 0.0) || (h1 < 0.0 && h2 > 0.0)) H = s / h;
    if (H > mH) H = mH;
    if (H < -mH) H = -mH;
    if (h > mH) h = mH;
    if (h < -mH) h = -mH;
    double G = g1 + g2;
    double g = g1 - g2;
    const double mG = std::fabs(G) < std::fabs(g) ? std::fabs(g) : std::fabs(G);
    if ((g1 > 0.0 && g2 > 0.0) || (g1 < 0.0 && g2 < 0.0)) g = y / G;
    if ((g1 > 0.0 && g2 < 0.0) || (g1 < 0.0 && g2 > 0.0)) G = y / g;
    if (G > mG) G = mG;
    if (G < -mG) G = -mG;
    if (g > mG) g = mG;
    if (g < -mG) g = -mG;
    const int count = PlainQuadratic(1.0, G, H, roots);
    return count + PlainQuadratic(1.0, g, h, roots + count);
}

inline int PlainQuartic(double a, double b, double c, double d, double e, double* roots) {
    if (1.05367e-8 > std::fabs(a)) return PlainCubic(b, c, d, e, roots);
    const double p = b / a, q = c / a, r = d / a, s = e / a;
    if ((std::fabs(q) + std::fabs(s)) * 1.05367e-8 > std::fabs(p) + std::fabs(r)) {
        double y[2];
        const int n = PlainQuadratic(1.0, q, s, y);
        int count = 0;
        if (n >= 1 && y[0] > 0.0) {
            roots[count++] = std::sqrt(y[0]);
            roots[count++] = -std::sqrt(y[0]);
        }
        if (n >= 2 && y[1] > 0.0) {
            roots[count++] = std::sqrt(y[1]);
            roots[count++] = -std::sqrt(y[1]);
        }
        return count;
    }
    const int index = (p < 0.0 ? 8 : 0) + (q < 0.0 ? 4 : 0) + (r < 0.0 ? 2 : 0) + (s < 0.0 ? 1 : 0);
    switch (index) {
        case 1:
        case 2:
        case 5:
        case 8:
        case 11:
            return PlainNeumark(p, q, r, s, roots);
        default:
            return PlainFerrari(p, q, r, s, roots);
    }
}

}  // namespace KM::Test
