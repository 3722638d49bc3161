#include "standard_tables.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vesk::refgen {

double pweExpectancy(double mu, double remaining, double exNext) {
    if (mu == 0)
        return remaining + exNext;
    return -std::expm1(-mu * remaining) / mu + std::exp(-mu * remaining) * exNext;
}

std::optional<double> pweHazard(double ex, double exNext, double n) {
    if (!(ex > 0) || !(exNext >= 0) || !(n > 0) || ex > n + exNext)
        return std::nullopt;
    double lo = 0, hi = 1;
    while (pweExpectancy(hi, n, exNext) > ex) {
        hi *= 2;
        if (hi > 1e6)
            return std::nullopt;
    }
    // The right side falls strictly with mu: bisection to the last bit.
    for (int i = 0; i < 200 && hi - lo > 0; ++i) {
        const double mid = 0.5 * (lo + hi);
        if (mid <= lo || mid >= hi)
            break;
        (pweExpectancy(mid, n, exNext) > ex ? lo : hi) = mid;
    }
    return 0.5 * (lo + hi);
}

std::optional<std::vector<double>> pweSingleYears(const AbridgedExpectancy& table) {
    const int first = table.ages.front();
    std::vector<double> out(static_cast<size_t>(table.ages.back() - first + 1));
    for (size_t i = 0; i + 1 < table.ages.size(); ++i) {
        const int n = table.ages[i + 1] - table.ages[i];
        const auto mu = pweHazard(table.ex[i], table.ex[i + 1], n);
        if (!mu)
            return std::nullopt;
        out[static_cast<size_t>(table.ages[i] - first)] = table.ex[i];
        for (int t = 1; t < n; ++t)
            out[static_cast<size_t>(table.ages[i] + t - first)] = pweExpectancy(*mu, n - t, table.ex[i + 1]);
    }
    out.back() = table.ex.back();
    return out;
}

std::vector<double> geometricSingleYears(const AbridgedExpectancy& table) {
    const int first = table.ages.front();
    std::vector<double> out(static_cast<size_t>(table.ages.back() - first + 1));
    for (size_t i = 0; i + 1 < table.ages.size(); ++i) {
        const int n = table.ages[i + 1] - table.ages[i];
        const double ratio = table.ex[i + 1] / table.ex[i];
        for (int t = 0; t < n; ++t)
            out[static_cast<size_t>(table.ages[i] + t - first)] =
                table.ex[i] * std::pow(ratio, double(t) / n);
    }
    out.back() = table.ex.back();
    return out;
}

namespace {

// exp(z)·E1(z) for z > 0, E1 the exponential integral: the power series below 1, the continued
// fraction (modified Lentz) above (Abramowitz & Stegun 5.1.11 and 5.1.22).
double scaledE1(double z) {
    if (z <= 1) {
        const double eulerGamma = 0.57721566490153286061;
        double sum = 0, term = 1;
        for (int k = 1; k < 100; ++k) {
            term *= -z / k;
            sum += term / k;
            if (std::abs(term / k) < 1e-18)
                break;
        }
        return std::exp(z) * (-eulerGamma - std::log(z) - sum);
    }
    const double tiny = 1e-300;
    double b = z + 1, c = 1 / tiny, d = 1 / b, h = d;
    for (int i = 1; i < 1000; ++i) {
        const double an = -static_cast<double>(i) * i;
        b += 2;
        d = 1 / (an * d + b);
        c = b + an / c;
        const double delta = c * d;
        h *= delta;
        if (std::abs(delta - 1) < 1e-16)
            break;
    }
    return h;
}

using Point = std::array<double, 2>;

// Nelder-Mead simplex in two dimensions (reflection 1, expansion 2, contraction 1/2, shrink 1/2).
template <typename F> Point nelderMead(F f, Point start, double scale) {
    std::array<Point, 3> p{start, Point{start[0] + scale, start[1]}, Point{start[0], start[1] + scale}};
    std::array<double, 3> v{f(p[0]), f(p[1]), f(p[2])};
    auto along = [](const Point& a, const Point& b, double t) {
        return Point{a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])};
    };
    for (int iter = 0; iter < 5000; ++iter) {
        std::array<int, 3> o{0, 1, 2};
        std::sort(o.begin(), o.end(), [&](int a, int b) { return v[a] < v[b]; });
        const int best = o[0], mid = o[1], worst = o[2];
        if (std::abs(v[worst] - v[best]) <= 1e-30 + 1e-15 * std::abs(v[best]) &&
            std::hypot(p[worst][0] - p[best][0], p[worst][1] - p[best][1]) < 1e-12)
            break;
        const Point centre{(p[best][0] + p[mid][0]) / 2, (p[best][1] + p[mid][1]) / 2};
        const Point r = along(centre, p[worst], -1);
        const double fr = f(r);
        if (fr < v[best]) {
            const Point e = along(centre, p[worst], -2);
            const double fe = f(e);
            p[worst] = fe < fr ? e : r, v[worst] = std::min(fe, fr);
        } else if (fr < v[mid]) {
            p[worst] = r, v[worst] = fr;
        } else {
            const Point c = along(centre, p[worst], 0.5);
            const double fc = f(c);
            if (fc < v[worst]) {
                p[worst] = c, v[worst] = fc;
            } else {
                for (int k : {mid, worst}) {
                    p[k] = along(p[best], p[k], 0.5);
                    v[k] = f(p[k]);
                }
            }
        }
    }
    return p[std::min_element(v.begin(), v.end()) - v.begin()];
}

} // namespace

// With z = m/B, e = integral of exp(-z(exp(B·t) - 1)) dt = exp(z)·E1(z) / B.
double gompertzExpectancy(double m, double B) {
    return scaledE1(m / B) / B;
}

double GompertzFit::expectancy(double age) const {
    return gompertzExpectancy(A * std::exp(B * (age - x0)), B);
}

GompertzFit fitGompertz(const std::vector<int>& ages, const std::vector<double>& ex) {
    GompertzFit fit;
    fit.x0 = ages.front();
    auto rss = [&](const Point& p) {
        GompertzFit g{fit.x0, std::exp(p[0]), std::exp(p[1]), 0};
        double s = 0;
        for (size_t i = 0; i < ages.size(); ++i) {
            const double d = g.expectancy(ages[i]) - ex[i];
            s += d * d;
        }
        return s;
    };
    const Point best = nelderMead(rss, Point{std::log(1 / ex.front()), std::log(0.1)}, 0.2);
    fit.A = std::exp(best[0]);
    fit.B = std::exp(best[1]);
    fit.rss = rss(best);
    return fit;
}

} // namespace vesk::refgen
