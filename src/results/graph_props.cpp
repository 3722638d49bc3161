#include "results/graph_props.h"

#include "foundation/settings.h"
#include "platform/texts.h"
#include "results/results_texts.h"

#include <QFile>
#include <QRegularExpression>

namespace vesk {

namespace rt = results_texts;

namespace {

constexpr qint64 kMaxBytes = 1 << 20;
constexpr int kMaxLines = 1000;

GraphLine fieldsOf(const QString& line) {
    GraphLine out;
    int from = 0;
    while (out.size() < kGraphFields) {
        const int open = int(line.indexOf(u'{', from));
        if (open < 0)
            break;
        const int close = int(line.indexOf(u'}', open + 1));
        if (close < 0)
            break;
        out << line.mid(open + 1, close - open - 1);
        from = close + 1;
    }
    while (out.size() < kGraphFields)
        out << QString();
    return out;
}

} // namespace

std::optional<GraphProps> readGraphProps(const QString& path, QString* error) {
    QFile f(path);
    if (!f.exists() || !f.open(QIODevice::ReadOnly)) {
        *error = text(rt::kGphMissing);
        return std::nullopt;
    }
    if (f.size() > kMaxBytes) {
        *error = QStringLiteral("%1 is larger than a chart list can be (%2 bytes)").arg(path).arg(f.size());
        return std::nullopt;
    }
    const QStringList lines = QString::fromUtf8(f.readAll()).split(QRegularExpression(QStringLiteral("\r\n|\n|\r")));
    GraphProps props;
    bool charts = false;
    for (const QString& line : lines) {
        if (!charts) {
            charts = line.trimmed().compare(QLatin1String("[DisplayGraph]"), Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!line.contains(u'{'))
            continue;
        if (int(props.size()) == kMaxLines) {
            *error = QStringLiteral("%1 holds more than %2 chart lines").arg(path).arg(kMaxLines);
            return std::nullopt;
        }
        props.push_back(fieldsOf(line));
    }
    return props;
}

QString graphLineText(const GraphLine& line) {
    QString out;
    for (int k = 0; k < kGraphFields; ++k)
        out += u'{' + line.value(k) + u'}';
    return out;
}

QString graphPropsPath() {
    return settings().AppPath + QStringLiteral("/Gph.stp");
}

} // namespace vesk
