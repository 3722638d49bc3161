#include "oaigd_fit.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace vesk::refgen {

namespace {

constexpr int kSegments = 24; // [10, 15], ..., [125, 130]

// Simpson's rule of f and x·f over [a, b] on steps of about `step`, an even number of them.
std::array<double, 2> simpson(const std::function<double(double)>& f, double a, double b, double step) {
    int n = static_cast<int>(std::lround((b - a) / step));
    n += n % 2;
    const double h = (b - a) / n;
    double s0 = 0, s1 = 0;
    for (int k = 0; k <= n; ++k) {
        const double x = a + k * h;
        const double w = (k == 0 || k == n) ? 1 : (k % 2 ? 4 : 2);
        const double v = f(x);
        s0 += w * v;
        s1 += w * x * v;
    }
    return {s0 * h / 3, s1 * h / 3};
}

// Index of the tabulated age `a` (10, 15, ..., 75) in a model table.
int rowOf(const CdLifeTable& t, double a) {
    for (int i = 0; i < kCdRegressed; ++i)
        if (t.age[i] == a)
            return i;
    return -1;
}

struct Observation {
    double ratio, expR;
    std::array<double, kBoai.size()> y;
};

// Ordinary least squares of y on (1, x, z) through the centred normal equations.
void solve(const std::vector<Observation>& obs, size_t k, OaigdFit& fit) {
    double mx = 0, mz = 0, my = 0;
    for (const auto& o : obs)
        mx += o.ratio, mz += o.expR, my += o.y[k];
    const double count = static_cast<double>(obs.size());
    mx /= count, mz /= count, my /= count;
    double cxx = 0, czz = 0, cxz = 0, cxy = 0, czy = 0, cyy = 0;
    for (const auto& o : obs) {
        const double dx = o.ratio - mx, dz = o.expR - mz, dy = o.y[k] - my;
        cxx += dx * dx, czz += dz * dz, cxz += dx * dz, cxy += dx * dy, czy += dz * dy, cyy += dy * dy;
    }
    const double det = cxx * czz - cxz * cxz;
    fit.b = (cxy * czz - czy * cxz) / det;
    fit.c = (czy * cxx - cxy * cxz) / det;
    fit.a = my - fit.b * mx - fit.c * mz;
    double sse = 0, worst = 0;
    for (const auto& o : obs) {
        const double e = o.y[k] - (fit.a + fit.b * o.ratio + fit.c * o.expR);
        sse += e * e;
        worst = std::max(worst, std::abs(e));
    }
    fit.n = static_cast<int>(obs.size());
    fit.r2 = 1 - sse / cyy;
    fit.rmse = std::sqrt(sse / fit.n);
    fit.maxAbsError = worst;
    fit.ratioMin = fit.ratioMax = obs.front().ratio;
    for (const auto& o : obs)
        fit.ratioMin = std::min(fit.ratioMin, o.ratio), fit.ratioMax = std::max(fit.ratioMax, o.ratio);
}

} // namespace

double StableDeaths::meanExcessAge(int boai) const {
    const int i = (boai - 10) / 5;
    return ageMomentAbove[i] / deathsAbove[i] - boai;
}

StableDeaths stableDeaths(const CdLifeTable& t, double r, double step) {
    std::array<std::array<double, 2>, kSegments> seg{};
    for (int s = 0; s < kSegments; ++s) {
        const double a = 10 + 5.0 * s;
        std::function<double(double)> density;
        if (a < 80) {
            const int i = rowOf(t, a);
            const double la = t.lx[i];
            const double mu = std::log(la / t.lx[i + 1]) / 5;
            density = [=](double x) { return std::exp(-r * x) * la * std::exp(-mu * (x - a)) * mu; };
        } else {
            density = [&t, r](double x) {
                return std::exp(-r * x) * t.tailSurvivorship(x - 80) * t.m80 * std::exp(t.kappa * (x - 80));
            };
        }
        seg[s] = simpson(density, a, a + 5, step);
    }
    StableDeaths d;
    double d0 = 0, d1 = 0;
    for (int s = kSegments - 1; s >= 0; --s) {
        d0 += seg[s][0], d1 += seg[s][1];
        d.deathsAbove[s] = d0, d.ageMomentAbove[s] = d1;
    }
    return d;
}

std::vector<double> oaigdGrowthRates() {
    std::vector<double> r;
    for (int k = -2; k <= 8; ++k)
        r.push_back(0.005 * k);
    return r;
}

std::vector<OaigdFit> fitOaigd(const CoaleDemenyData& data) {
    std::vector<OaigdFit> fits;
    for (CdFamily f : {CdFamily::West, CdFamily::North, CdFamily::East, CdFamily::South}) {
        std::vector<Observation> obs;
        for (CdSex s : {CdSex::Female, CdSex::Male})
            for (int level = 1; level <= kCdLevels; ++level) {
                const CdLifeTable t = coaleDemenyTable(data, f, s, level);
                for (double r : oaigdGrowthRates()) {
                    const StableDeaths d = stableDeaths(t, r);
                    Observation o{d.ratio(), std::exp(r), {}};
                    for (size_t k = 0; k < kBoai.size(); ++k)
                        o.y[k] = d.meanExcessAge(kBoai[k]);
                    obs.push_back(o);
                }
            }
        for (size_t k = 0; k < kBoai.size(); ++k) {
            OaigdFit fit;
            fit.family = f;
            fit.boai = kBoai[k];
            solve(obs, k, fit);
            fits.push_back(fit);
        }
    }
    return fits;
}

} // namespace vesk::refgen
