#include "inputs/foreign_types.h"

#include "inputs/foreign_driver.h"

#include "platform/runtime.h"

#include <cmath>
#include <iterator>
#include <limits>

namespace vesk {

ForeignKind foreignKind(const QString& path) {
    const QString p = path.trimmed().toUpper();
    if (Like(p, QStringLiteral("*.WK1")))
        return ForeignKind::Wk1;
    if (Like(p, QStringLiteral("*.XLSX")))
        return ForeignKind::Xlsx;
    if (Like(p, QStringLiteral("*.XLS")))
        return ForeignKind::Xls;
    if (Like(p, QStringLiteral("*.DBF")))
        return ForeignKind::Dbf;
    for (const char* pattern : {"*.MDB", "*.VDB", "*.DB", "*.SQLITE"})
        if (Like(p, QString::fromLatin1(pattern)))
            return ForeignKind::Database;
    if (Like(p, QStringLiteral("*.TXT")))
        return ForeignKind::Text;
    return ForeignKind::None;
}

ForeignKind foreignKindOfName(const QString& name) {
    const QString n = name.trimmed();
    return n.isEmpty() ? ForeignKind::None : foreignKind(QStringLiteral("x.") + n);
}

namespace {

// Column classes from narrow to wide; within the first four the widest wins.
enum class Rank { None, Integer, Long, Single, Double, Date, Logical, String };

Rank classify(const Cell& c) {
    if (c.isEmpty() || c.isNull())
        return Rank::None;
    if (!c.isNumber())
        return Rank::String;
    switch (c.subtype()) {
    case Cell::Subtype::Boolean:
        return Rank::Logical;
    case Cell::Subtype::Date:
        return Rank::Date;
    case Cell::Subtype::Single:
        return Rank::Single;
    case Cell::Subtype::Double:
        break;
    }
    const double v = c.toDouble();
    if (!std::isfinite(v) || v != std::trunc(v))
        return Rank::Double;
    if (v >= std::numeric_limits<qint16>::min() && v <= std::numeric_limits<qint16>::max())
        return Rank::Integer;
    if (v >= std::numeric_limits<qint32>::min() && v <= std::numeric_limits<qint32>::max())
        return Rank::Long;
    return Rank::Double;
}

bool numeric(Rank r) {
    return r == Rank::Integer || r == Rank::Long || r == Rank::Single || r == Rank::Double;
}

Rank widen(Rank a, Rank b) {
    if (a == Rank::None || a == b)
        return b;
    if (b == Rank::None)
        return a;
    if (!numeric(a) || !numeric(b))
        return Rank::String;
    if (a == Rank::Double || b == Rank::Double)
        return Rank::Double;
    if (a == Rank::Single || b == Rank::Single) // a single and a long need a double to hold both
        return (a == Rank::Long || b == Rank::Long) ? Rank::Double : Rank::Single;
    return Rank::Long;
}

// The field type of each rank, in the order of Rank; a column with no value at all is text.
QString rankName(Rank r) {
    static const char* const names[] = {"String", "Integer", "Long",    "Single",
                                        "Double", "Date",    "Logical", "String"};
    static_assert(std::size(names) == static_cast<std::size_t>(Rank::String) + 1);
    return QString::fromLatin1(names[static_cast<int>(r)]);
}

} // namespace

void FnColTypes(const CellArray& array, CellArray& types) {
    const bool flat = array.rank() == 1;
    const int rows = array.rank() >= 1 ? array.size(0) : 0;
    const int cols = flat ? 1 : (array.rank() >= 2 ? array.size(1) : 0);
    types = CellArray{2, cols};
    for (int j = 0; j < cols; ++j) {
        Rank rank = Rank::None;
        int length = 0;
        for (int i = 0; i < rows; ++i) {
            const Cell& c =
                flat ? array.at({array.lbound(0) + i}) : array.at({array.lbound(0) + i, array.lbound(1) + j});
            rank = widen(rank, classify(c));
            if (!c.isEmpty() && !c.isNull())
                length = std::max(length, static_cast<int>(valueText(c).size()));
        }
        types(0, j) = Cell(rankName(rank));
        types(1, j) = Cell(length);
    }
}

QString FnCreateTableSql(const QString& tableName, const QStringList& fieldNames, const CellArray& types) {
    QString fields;
    const int cols = types.rank() == 2 ? types.size(1) : 0;
    for (int j = 0; j < cols; ++j) {
        const QString name = j < fieldNames.size() ? fieldNames[j] : QStringLiteral("Field%1").arg(j);
        const QString type = types(0, j).toString();
        const int length = static_cast<int>(types(1, j).toDouble());
        fields += u'[' + name + QStringLiteral("] ");
        if (type == QLatin1String("String") && length <= 0)
            fields += QStringLiteral("string,");
        else if (type == QLatin1String("String"))
            fields += QStringLiteral("String(%1),").arg(length);
        else
            fields += type + u',';
    }
    fields.chop(1);
    return QStringLiteral("create table ") + tableName + QStringLiteral(" ( ") + fields +
           QStringLiteral(" ) ");
}

FieldType fieldTypeOf(const QString& typeName) {
    const QString t = typeName.trimmed().toLower();
    if (t == u"integer" || t == u"short" || t == u"smallint" || t == u"byte" || t == u"int2")
        return FieldType::Integer;
    if (t == u"long" || t == u"int" || t == u"int4" || t == u"counter" || t == u"autoincrement")
        return FieldType::Long;
    if (t == u"single" || t == u"real" || t == u"float4")
        return FieldType::Single;
    if (t == u"double" || t == u"float" || t == u"float8" || t == u"numeric" || t == u"currency" ||
        t == u"number")
        return FieldType::Double;
    if (t == u"date" || t == u"datetime" || t == u"time" || t == u"timestamp")
        return FieldType::Date;
    if (t == u"logical" || t == u"bit" || t == u"yesno" || t == u"boolean" || t == u"bool")
        return FieldType::Logical;
    return FieldType::Text;
}

namespace {

// A small cursor over the statement text.
struct Scanner {
    const QString& s;
    int i = 0;
    void skipSpace() {
        while (i < s.size() && s[i].isSpace())
            ++i;
    }
    bool atEnd() {
        skipSpace();
        return i >= s.size();
    }
    bool take(QChar c) {
        skipSpace();
        if (i < s.size() && s[i] == c) {
            ++i;
            return true;
        }
        return false;
    }
    QString word() { // letters, digits and underscores
        skipSpace();
        const int start = i;
        while (i < s.size() && (s[i].isLetterOrNumber() || s[i] == u'_'))
            ++i;
        return s.mid(start, i - start);
    }
    std::optional<QString> name() { // [any text] or a bare run up to a blank, "(" or ","
        skipSpace();
        if (take(u'[')) {
            const int close = s.indexOf(u']', i);
            if (close < 0)
                return std::nullopt;
            const QString n = s.mid(i, close - i);
            i = close + 1;
            return n;
        }
        const int start = i;
        while (i < s.size() && !s[i].isSpace() && s[i] != u'(' && s[i] != u',' && s[i] != u')')
            ++i;
        if (i == start)
            return std::nullopt;
        return s.mid(start, i - start);
    }
};

std::optional<TableDef> fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return std::nullopt;
}

} // namespace

std::optional<TableDef> parseCreateTable(const QString& sql, QString* error) {
    Scanner sc{sql};
    const QString syntax = QStringLiteral("Syntax error in CREATE TABLE statement.");
    if (sc.word().compare(u"create", Qt::CaseInsensitive) != 0 ||
        sc.word().compare(u"table", Qt::CaseInsensitive) != 0)
        return fail(error, syntax);
    TableDef def;
    const auto table = sc.name();
    if (!table || table->isEmpty() || !sc.take(u'('))
        return fail(error, syntax);
    def.name = *table;
    for (;;) {
        const auto field = sc.name();
        const QString type = field ? sc.word() : QString();
        if (!field || field->isEmpty() || type.isEmpty())
            return fail(error, syntax);
        FieldDef f{*field, type, 0};
        if (sc.take(u'(')) {
            bool ok = false;
            f.length = sc.word().toInt(&ok);
            if (!ok || !sc.take(u')'))
                return fail(error, syntax);
        }
        def.fields << f;
        if (sc.take(u','))
            continue;
        // The closing parenthesis may be missing at the very end, as the drivers allow.
        if (sc.take(u')') || sc.atEnd())
            break;
        return fail(error, syntax);
    }
    if (!sc.atEnd())
        return fail(error, syntax);
    return def;
}

FolderAndBase splitFolderAndBase(const QString& path) {
    const QString p = path.trimmed();
    const int cut = static_cast<int>(std::max(p.lastIndexOf(u'\\'), p.lastIndexOf(u'/')));
    FolderAndBase out;
    QString file = p.mid(cut + 1);
    if (cut < 0) {
        out.folder = QStringLiteral(".");
    } else {
        out.folder = p.left(cut);
        // A root keeps its separator: "C:" alone would mean the current folder of drive C.
        if (out.folder.isEmpty() || (out.folder.size() == 2 && out.folder[1] == u':'))
            out.folder = p.left(cut + 1);
    }
    const int dot = static_cast<int>(file.lastIndexOf(u'.'));
    out.base = dot > 0 ? file.left(dot) : file;
    return out;
}

namespace {
RuntimeError& errorSlot() {
    static RuntimeError e(0, QString());
    return e;
}
} // namespace

const RuntimeError& lastForeignError() {
    return errorSlot();
}

void setForeignError(int number, const QString& description) {
    errorSlot() = RuntimeError(number, description);
}

void clearForeignError() {
    errorSlot() = RuntimeError(0, QString());
}

} // namespace vesk
