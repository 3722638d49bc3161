#pragma once
// Cell: the dynamic value of every working array. It is Empty (never assigned), Null (no value),
// a number, a text or a nested array, and the three of Empty, Null and 0 stay apart in results.
// 16 bytes: a one-byte kind, a one-byte number subtype and a union of a double, a counted text
// pointer and a counted array pointer. A text is shared by the copies of its cell and freed with the
// last of them, so that reading many files of many texts gives the memory back.
//
// A number remembers what it stands for, as the variant subtypes of the old runtime did: a plain
// double, a single, a Boolean (True is -1, False 0) or a date (days since 30 December 1899, the
// fraction being the time of day). Foreign files and column types need the difference; arithmetic
// does not, so every subtype is a number to toDouble().

#include <QDate>
#include <QDateTime>
#include <QString>
#include <cstdint>

namespace vesk {

class CellArray;

class Cell {
public:
    enum class Kind : std::uint8_t { Empty, Null, Number, Text, Array };
    enum class Subtype : std::uint8_t { Double, Single, Boolean, Date };

    Cell() noexcept : kind_(Kind::Empty), num_(0.0) {}
    Cell(double v) noexcept : kind_(Kind::Number), num_(v) {}
    Cell(int v) noexcept : kind_(Kind::Number), num_(v) {}
    Cell(const QString& text);
    Cell(const char* text) : Cell(QString::fromUtf8(text)) {}
    Cell(const CellArray& array);
    Cell(CellArray&& array);
    static Cell null() noexcept {
        Cell c;
        c.kind_ = Kind::Null;
        return c;
    }
    static Cell single(float v) noexcept { return Cell(static_cast<double>(v), Subtype::Single); }
    static Cell boolean(bool v) noexcept { return Cell(v ? -1.0 : 0.0, Subtype::Boolean); }
    // A date as its serial: whole days since 30 December 1899, plus the fraction of the day.
    static Cell date(double serial) noexcept { return Cell(serial, Subtype::Date); }

    Cell(const Cell& other) noexcept;
    Cell(Cell&& other) noexcept;
    Cell& operator=(const Cell& other) noexcept;
    Cell& operator=(Cell&& other) noexcept;
    ~Cell();

    Kind kind() const noexcept { return kind_; }
    bool isEmpty() const noexcept { return kind_ == Kind::Empty; }
    bool isNull() const noexcept { return kind_ == Kind::Null; }
    bool isNumber() const noexcept { return kind_ == Kind::Number; }
    bool isText() const noexcept { return kind_ == Kind::Text; }
    bool isArray() const noexcept { return kind_ == Kind::Array; }
    // The subtype of a number; Double for every other kind.
    Subtype subtype() const noexcept { return kind_ == Kind::Number ? sub_ : Subtype::Double; }
    bool isBoolean() const noexcept { return subtype() == Subtype::Boolean; }
    bool isDate() const noexcept { return subtype() == Subtype::Date; }
    bool isSingle() const noexcept { return subtype() == Subtype::Single; }

    // The stored number; texts go through the lenient parse, Empty and Null give 0.
    double toDouble() const;
    // The text as the old runtime would print it: Empty gives "", Null gives "", numbers in
    // shortest round-trip form, Booleans "True" / "False", dates "yyyy-MM-dd" with " hh:mm:ss"
    // when there is a time of day.
    QString toString() const;
    // The nested array; only valid when isArray().
    const CellArray& array() const;
    CellArray& array();

    // Equality of kind, subtype and value (texts compared exactly, arrays by content).
    bool operator==(const Cell& other) const;
    bool operator!=(const Cell& other) const { return !(*this == other); }

private:
    struct ArrayBox;
    struct TextBox;
    Cell(double v, Subtype sub) noexcept : kind_(Kind::Number), sub_(sub), num_(v) {}
    void release() noexcept;
    void retain() const noexcept;

    Kind kind_;
    Subtype sub_ = Subtype::Double;
    union {
        double num_;
        TextBox* text_;
        ArrayBox* arr_;
    };
};

static_assert(sizeof(Cell) == 16, "a cell is 16 bytes");

// Date serials: days since 30 December 1899 (day 0), the fraction being the time of day, to the
// millisecond. Dates before day 0 count backwards with a positive fraction, as the runtime does.
double dateSerial(const QDateTime& when);
double dateSerial(const QDate& day);
// The date and time of a serial; an invalid QDateTime for a serial that is not finite or lies a
// billion days or more from day 0.
QDateTime serialToDateTime(double serial);

// A value as the text a file keeps of it: a number as the runtime prints it where that gives the
// same double back, else the shortest text that does; every other value as its text (toString).
QString valueText(const Cell& value);

} // namespace vesk
