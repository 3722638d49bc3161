#include "burden/kernel.h"

#include "burden/kernel_texts.h"
#include "foundation/error_store.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/runtime.h"

#include <cmath>
#include <optional>

namespace vesk {

using namespace kernel_texts;
using namespace runtime_arithmetic;

namespace {

// The numbers of the parameter checks (negative: the kernel's own raises), with their words.
enum KernelCheck : int {
    kErrIYLDr = -1,    // FnlYLD: r < 0 or r >= 1, words kRRange
    kErrIYLDk = -2,    // FnlYLD: K < 0 or K > 1, words kRRange
    kErrIYLDBeta = -3, // FnlYLD: Beta < 0 or Beta >= 1, words kBetaRange
    kErrIYLDc = -4,    // FnlYLD: C <= 0, words kBetaRange
    kErrPYLDk = -5,    // FnPYLD: K < 0 or K > 1, words kRRange
    kErrPYLDBeta = -6, // FnPYLD: Beta < 0 or Beta >= 1, words kBetaRange
    kErrPYLDc = -7,    // FnPYLD: C < 0, words kBetaRange
    kErrYLLr = -10,    // FnYLLF: r < 0 or r >= 1, words kRRange
    kErrYLLk = -11,    // FnYLLF: K < 0 or K > 1, words kKRangeYLL
    kErrYLLBeta = -13, // FnYLLF: Beta < 0 or Beta >= 1, words kBetaRange
    kErrYLLc = -14,    // FnYLLF: C <= 0, words kCRangeYLL
};

// The error handler of a kernel function: every failure goes to the error store under the
// function's name, and the run resumes with the next statement.
class ResumeNext {
public:
    // The name is made a text only when something is stored: a kernel function runs millions of
    // times in a computation, and fails rarely.
    explicit ResumeNext(const char* source) : source_(source) {}

    void raise(int number, const char* words) const { raise(number, QString::fromLatin1(words)); }
    void raise(int number, const QString& words) const { ErrorStore(number, words, QString::fromLatin1(source_)); }

    // One statement: a failure leaves whatever it was to assign as it was.
    template <class Statement> void run(Statement&& statement) const {
        try {
            statement();
        } catch (const RuntimeError& f) {
            raise(f.number, f.words);
        }
    }

    // The condition of a check. A failure in it is stored, and since the run resumes with the
    // statement after the condition, which is the check's own raise, the check then fails too.
    template <class Condition> bool test(Condition&& condition) const {
        try {
            return condition();
        } catch (const RuntimeError& f) {
            raise(f.number, f.words);
            return true;
        }
    }

private:
    const char* source_;
};

// Beta = "": Empty equals the empty string; a number is compared as its text, which is never empty;
// Null is not the empty string. An array cannot be compared.
bool equalsEmptyText(const Cell& c) {
    switch (c.kind()) {
    case Cell::Kind::Empty:
        return true;
    case Cell::Kind::Text:
        return c.toString().isEmpty();
    case Cell::Kind::Number:
    case Cell::Kind::Null:
        return false;
    case Cell::Kind::Array:
        break;
    }
    fail(runtime_error::kTypeMismatch);
}

// A single-float result: out of the single range is an overflow.
float fl(float v) {
    if (!std::isfinite(v))
        overflow();
    return v;
}

// Storing a double in a single float.
float single(double v) {
    const float f = toSingle(finite(v));
    if (std::isinf(f))
        overflow();
    return f;
}

struct Check {
    int number;
    const char* words;
};

// The Beta and C checks, run only when Beta is not the empty string.
void checkBetaAndC(const ResumeNext& h, const Cell& Beta, const Cell& C, Check beta, Check c,
                   bool zeroFails) {
    if (!h.test([&] { return !equalsEmptyText(Beta); }))
        return;
    if (h.test([&] {
            const auto b = comparand(Beta);
            return b && (*b < 0 || *b >= 1);
        }))
        h.raise(beta.number, beta.words);
    if (h.test([&] {
            const auto v = comparand(C);
            return v && (zeroFails ? *v <= 0 : *v < 0);
        }))
        h.raise(c.number, c.words);
}

// The checks of a discounted formula (FnlYLD, FnYLLF): r from 0 to below 1, K from 0 to 1, then
// Beta and C, a C of 0 failing too; each with its formula's error number and words.
struct DiscountedChecks {
    Check r, K, Beta, C;
};

void checkDiscounted(const ResumeNext& h, float r, float K, const Cell& Beta, const Cell& C,
                     const DiscountedChecks& checks) {
    if (r < 0 || r >= 1)
        h.raise(checks.r.number, checks.r.words);
    if (K < 0 || K > 1)
        h.raise(checks.K.number, checks.K.words);
    checkBetaAndC(h, Beta, C, checks.Beta, checks.C, true);
}

// FnlYLD, r = 0 and K != 0.
float iyldUndiscounted(const ResumeNext& h, float a, float L, float D, float K, const Cell& Beta,
                       const Cell& C, float N) {
    float A = 0, B = 0, E = 0, result = 0;
    h.run([&] {
        const double kc = K * operand(C);
        const double b = operand(Beta);
        A = single(quot(finite(kc * ex(-b * a)), sq(b)));
    });
    h.run([&] {
        const double b = operand(Beta);
        B = single(ex(-b * L) * (-b * fl(a + L) - 1) - (-b * a - 1));
    });
    h.run([&] { E = fl((1 - K) * L); });
    h.run([&] { result = fl((A * B * D + E) * N); });
    return result;
}

// FnlYLD, r != 0 and K != 0.
float iyldDiscounted(const ResumeNext& h, float a, float L, float D, float r, float K, const Cell& Beta,
                     const Cell& C, float N) {
    float P = 0, E1 = 0, E2 = 0, U = 0, result = 0;
    double G = 0, H = 0;
    h.run([&] { P = single(ex(fl(r * a))); });
    h.run([&] {
        const double rb = r + operand(Beta);
        E1 = single(ex(-rb * fl(a + L)));
    });
    h.run([&] {
        const double rb = r + operand(Beta);
        E2 = single(ex(-rb * a));
    });
    h.run([&] {
        const double kc = K * operand(C);
        const double rb = r + operand(Beta);
        G = quot(finite(kc * P), sq(rb));
    });
    h.run([&] {
        const double rb = r + operand(Beta);
        H = finite(E1 * (-rb * fl(a + L) - 1) - E2 * (-rb * a - 1));
    });
    h.run([&] { U = fl((1 - K) / r); });
    h.run([&] { result = single(D * (G * H + U) * N); });
    return result;
}

// FnYLLF, r != 0 and K != 0.
double yllDiscounted(const ResumeNext& h, float a, float L, float r, float K, const Cell& Beta,
                     const Cell& C) {
    double E0 = 0, E1 = 0, E2 = 0, result = 0;
    h.run([&] { E0 = ex(fl(-r * L)); });
    h.run([&] {
        const double rb = r + operand(Beta);
        E1 = ex(-rb * fl(L + a));
    });
    h.run([&] {
        const double rb = r + operand(Beta);
        E2 = ex(-rb * a);
    });
    h.run([&] {
        const double kc = K * operand(C);
        const double P = ex(fl(r * a));
        const double rb = r + operand(Beta);
        const double bracket = E1 * (-rb * fl(L + a) - 1) - E2 * (-rb * a - 1);
        result = finite(quot(finite(kc * P), sq(rb)) * bracket + double(fl((1 - K) / r)) * (1 - E0));
    });
    return result;
}

} // namespace

float FnlYLD(float a, float L, float D, float r, float K, const Cell& Beta, const Cell& C, float N) {
    const ResumeNext h(kSourceIYLD);
    checkDiscounted(
        h, r, K, Beta, C,
        {{kErrIYLDr, kRRange}, {kErrIYLDk, kRRange}, {kErrIYLDBeta, kBetaRange}, {kErrIYLDc, kBetaRange}});

    if (r == 0 && K != 0)
        return iyldUndiscounted(h, a, L, D, K, Beta, C, N);
    if (r != 0 && K != 0)
        return iyldDiscounted(h, a, L, D, r, K, Beta, C, N);
    float result = 0;
    if (r == 0)
        h.run([&] { result = fl(D * L * N); });
    else
        h.run([&] { result = single(quot(1 - ex(fl(-r * L)), r) * D * N); });
    return result;
}

float FnPYLD(float a, float D, float K, const Cell& Beta, const Cell& C, float N) {
    const ResumeNext h(kSourcePYLD);
    if (K < 0 || K > 1)
        h.raise(kErrPYLDk, kRRange);
    checkBetaAndC(h, Beta, C, {kErrPYLDBeta, kBetaRange}, {kErrPYLDc, kBetaRange}, false);

    float result = 0;
    if (K == 0) {
        h.run([&] { result = fl(D * N); });
    } else if (K == 1) {
        h.run([&] {
            const double kc = K * operand(C);
            const double b = operand(Beta);
            const double weight = quot(finite(kc * ex(-b * a)), sq(b));
            const double ba1 = -b * a - 1; // the same in both brackets
            result = single(D * (finite(weight * (ex(-b) * ba1 - ba1)) + (1 - K)) * N);
        });
    }
    // Any other K: no branch, and no error of its own.
    return result;
}

double FnYLLF(float a, float L, float r, float K, const Cell& Beta, const Cell& C) {
    const ResumeNext h(kSourceYLL);
    checkDiscounted(
        h, r, K, Beta, C,
        {{kErrYLLr, kRRange}, {kErrYLLk, kKRangeYLL}, {kErrYLLBeta, kBetaRange}, {kErrYLLc, kCRangeYLL}});

    double result = 0;
    if (r == 0) {
        if (K == 0) {
            result = L;
        } else if (K > 0) {
            h.run([&] {
                const double kc = K * operand(C);
                const double b = operand(Beta);
                const double weight = quot(finite(kc * ex(-b * a)), sq(b));
                const double bracket = ex(-b * L) * (-b * fl(L + a) - 1) - (-b * a - 1);
                result = finite(weight * bracket + fl((1 - K) * L));
            });
        }
        // K < 0: no branch, the result stays 0.
    } else if (K == 0) {
        h.run([&] { result = finite(double(fl((1 - K) / r)) * (1 - ex(fl(-r * L)))); });
    } else {
        result = yllDiscounted(h, a, L, r, K, Beta, C);
    }
    return result;
}

} // namespace vesk
