#include "platform/runtime.h"

#include <cmath>

namespace vesk {

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

// Characters of the text with the blanks taken out, as the lenient parse sees them.
QString withoutBlanks(const QString& text) {
    QString s;
    s.reserve(text.size());
    for (QChar c : text)
        if (!isBlank(c))
            s.append(c);
    return s;
}

double radixValue(const QString& s, int pos, int radix) {
    double v = 0;
    int digits = 0;
    for (; pos < s.size(); ++pos) {
        int d = -1;
        const QChar c = s[pos].toUpper();
        if (c >= u'0' && c <= u'9')
            d = c.unicode() - u'0';
        else if (radix == 16 && c >= u'A' && c <= u'F')
            d = c.unicode() - u'A' + 10;
        if (d < 0 || d >= radix)
            break;
        v = v * radix + d;
        ++digits;
    }
    return digits ? v : 0.0;
}

bool likeFrom(const QString& t, int ti, const QString& p, int pi) {
    while (pi < p.size()) {
        const QChar pc = p[pi];
        if (pc == u'*') {
            while (pi < p.size() && p[pi] == u'*')
                ++pi;
            if (pi == p.size())
                return true;
            for (int k = ti; k <= t.size(); ++k)
                if (likeFrom(t, k, p, pi))
                    return true;
            return false;
        }
        if (ti >= t.size())
            return false;
        const QChar tc = t[ti];
        if (pc == u'?') {
            ++pi;
        } else if (pc == u'#') {
            if (!tc.isDigit())
                return false;
            ++pi;
        } else if (pc == u'[') {
            const int close = p.indexOf(u']', pi + 1);
            if (close < 0)
                return false; // an unclosed list matches nothing
            int k = pi + 1;
            bool negate = false;
            if (k < close && p[k] == u'!') {
                negate = true;
                ++k;
            }
            bool found = false;
            for (; k < close; ++k) {
                if (k + 2 < close && p[k + 1] == u'-') {
                    if (tc >= p[k] && tc <= p[k + 2])
                        found = true;
                    k += 2;
                } else if (p[k] == tc) {
                    found = true;
                }
            }
            if (found == negate)
                return false;
            pi = close + 1;
        } else {
            if (pc != tc)
                return false;
            ++pi;
        }
        ++ti;
    }
    return ti == t.size();
}

QString groupThousands(const QString& digits) {
    QString out;
    const int n = digits.size();
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out.append(u',');
        out.append(digits[i]);
    }
    return out;
}

} // namespace

double Val(const QString& text) {
    const QString s = withoutBlanks(text);
    if (s.size() >= 2 && s[0] == u'&') {
        const QChar k = s[1].toUpper();
        if (k == u'H')
            return radixValue(s, 2, 16);
        if (k == u'O')
            return radixValue(s, 2, 8);
        return radixValue(s, 1, 8);
    }
    int i = 0;
    QByteArray num;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-'))
        num.append(static_cast<char>(s[i++].unicode()));
    bool digits = false, point = false;
    for (; i < s.size(); ++i) {
        const QChar c = s[i];
        if (c.isDigit() && c.unicode() < 128) {
            num.append(static_cast<char>(c.unicode()));
            digits = true;
        } else if (c == u'.' && !point) {
            num.append('.');
            point = true;
        } else {
            break;
        }
    }
    if (!digits)
        return 0.0;
    if (i < s.size() && (s[i].toUpper() == u'E' || s[i].toUpper() == u'D')) {
        QByteArray exp("e");
        int j = i + 1;
        if (j < s.size() && (s[j] == u'+' || s[j] == u'-'))
            exp.append(static_cast<char>(s[j++].unicode()));
        bool expDigits = false;
        for (; j < s.size() && s[j].isDigit() && s[j].unicode() < 128; ++j) {
            exp.append(static_cast<char>(s[j].unicode()));
            expDigits = true;
        }
        if (expDigits)
            num.append(exp);
    }
    return std::strtod(num.constData(), nullptr);
}

QString numberToText(double value) {
    if (value == 0.0)
        return QStringLiteral("0");
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    QString s = QString::number(value, 'g', 15);
    const int e = s.indexOf(u'e');
    if (e < 0)
        return s;
    // 1e+20 -> 1E+20, 1e-05 -> 1E-05
    QString mant = s.left(e);
    QString exp = s.mid(e + 1);
    const QChar sign = exp[0] == u'-' ? u'-' : u'+';
    if (exp[0] == u'+' || exp[0] == u'-')
        exp = exp.mid(1);
    while (exp.size() < 2)
        exp.prepend(u'0');
    return mant + u'E' + sign + exp;
}

bool Like(const QString& text, const QString& pattern) {
    return likeFrom(text, 0, pattern, 0);
}

double roundHalfEven(double value, int digits) {
    const double scale = std::pow(10.0, digits);
    const double scaled = value * scale;
    double r = std::floor(scaled);
    const double diff = scaled - r;
    if (diff > 0.5 || (diff == 0.5 && std::fmod(r, 2.0) != 0.0))
        r += 1.0;
    return r / scale;
}

QString formatFixed(double value, int decimals) {
    if (decimals < 0)
        decimals = 0;
    const double scale = std::pow(10.0, decimals);
    // Decide the tie on the shortest decimal text of the value, not on its binary expansion,
    // so that 0.125 -> "0.13" and 2.675 -> "2.68" as a user reading the number expects.
    const double exact = QString::number(value, 'g', 15).toDouble();
    const double r = std::round(exact * scale) / scale;
    QString s = QString::number(r, 'f', decimals);
    if (s.startsWith(u'-') && s.toDouble() == 0.0)
        s.remove(0, 1);
    return s;
}

QString formatNumber(double value, const QString& picture) {
    const int point = picture.indexOf(u'.');
    int decimals = 0, optional = 0; // optional: the trailing "#" places, shown only when not 0
    if (point >= 0)
        for (int i = point + 1; i < picture.size() && (picture[i] == u'0' || picture[i] == u'#'); ++i) {
            ++decimals;
            optional = picture[i] == u'#' ? optional + 1 : 0;
        }
    const QString integerPicture = picture.left(point < 0 ? picture.size() : point);
    const bool thousands = integerPicture.contains(u',');
    QString s = formatFixed(value, decimals);
    // With no "0" before the point the integer digits are optional: 0.5 in "##.00" is ".50".
    if (point >= 0 && !integerPicture.contains(u'0')) {
        if (s.startsWith(QLatin1String("0.")))
            s.remove(0, 1);
        else if (s.startsWith(QLatin1String("-0.")))
            s.remove(1, 1);
    }
    for (int k = 0; k < optional && s.endsWith(u'0'); ++k)
        s.chop(1);
    if (!thousands)
        return s;
    const bool negative = s.startsWith(u'-');
    if (negative)
        s.remove(0, 1);
    const int p = s.indexOf(u'.');
    const QString intPart = p < 0 ? s : s.left(p);
    const QString rest = p < 0 ? QString() : s.mid(p);
    return (negative ? QStringLiteral("-") : QString()) + groupThousands(intPart) + rest;
}

double vbInt(double value) {
    return std::floor(value);
}

double vbFix(double value) {
    return std::trunc(value);
}

QString Mid(const QString& text, int start1, int length) {
    if (start1 < 1)
        start1 = 1;
    if (start1 > text.size())
        return QString();
    return length < 0 ? text.mid(start1 - 1) : text.mid(start1 - 1, length);
}

} // namespace vesk
