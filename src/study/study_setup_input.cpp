#include "study/study_setup_input.h"

#include "study/age_quick_fill.h"
#include "study/study_setup_texts.h"

#include <QRegularExpression>
#include <algorithm>

namespace vesk {

namespace {

bool isAsciiLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// A year of four digits, the first not 0.
std::optional<int> yearOf(const QString& text) {
    static const QRegularExpression re(QStringLiteral("^[1-9][0-9]{3}$"));
    if (!re.match(text).hasMatch())
        return std::nullopt;
    return text.toInt();
}

} // namespace

QString studyIdKeyMessage(QChar key, int position) {
    if (position == 0 && isAsciiDigit(key))
        return QString::fromLatin1(setup_texts::kIdStartsWithDigit);
    if (!isAsciiLetter(key) && !isAsciiDigit(key))
        return QString::fromLatin1(setup_texts::kIdNotAlphanumeric);
    return {};
}

QString studyIdTextMessage(const QString& text) {
    for (int i = 0; i < text.size(); ++i) {
        const QString message = studyIdKeyMessage(text[i], i);
        if (!message.isEmpty())
            return message;
    }
    return {};
}

bool isValidStudyId(const QString& id) {
    return !id.isEmpty() && id.size() <= kStudyIdMaxLength && studyIdTextMessage(id).isEmpty();
}

QString studyTitleKeyMessage(QChar key, int position) {
    if (position == 0 && key.isSpace())
        return QString::fromLatin1(setup_texts::kTitleStartsWithSpace);
    return {};
}

std::optional<QList<int>> parseStudyYears(const QString& text) {
    // A line break between two years stands for a comma; CR LF is one break.
    static const QRegularExpression lineBreaks(QStringLiteral("\\s*[\\r\\n]+\\s*"));
    static const QRegularExpression range(QStringLiteral("^(\\S+)\\s*-\\s*(\\S+)$"));
    const QString whole = text.trimmed().replace(lineBreaks, QStringLiteral(","));
    if (whole.isEmpty())
        return std::nullopt;
    QList<int> years;
    for (const QString& raw : whole.split(QLatin1Char(','))) {
        const QString item = raw.trimmed();
        if (const auto year = yearOf(item)) {
            years << *year;
            continue;
        }
        const auto m = range.match(item);
        if (!m.hasMatch())
            return std::nullopt;
        const auto first = yearOf(m.captured(1)), last = yearOf(m.captured(2));
        if (!first || !last || *first > *last)
            return std::nullopt;
        for (int y = *first; y <= *last; ++y)
            years << y;
    }
    std::sort(years.begin(), years.end());
    years.erase(std::unique(years.begin(), years.end()), years.end());
    return years;
}

QList<int> FiveYearAgeGroup(int n) {
    return FiveYrAgList(FirstYears::ZeroOneFour, 5 * n);
}

QString formatStudyYears(const QList<int>& years) {
    QStringList parts;
    for (int i = 0; i < years.size();) {
        int j = i;
        while (j + 1 < years.size() && years[j + 1] == years[j] + 1)
            ++j;
        parts << (j > i + 1 ? QStringLiteral("%1-%2").arg(years[i]).arg(years[j])
                            : QString::number(years[i]));
        if (j == i + 1)
            parts << QString::number(years[j]);
        i = j + 1;
    }
    return parts.join(QLatin1Char(','));
}

} // namespace vesk
