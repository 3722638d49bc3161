#pragma once
// Cell: the dynamic value of every working array. It is Empty (never assigned), Null (no value),
// a number, a text or a nested array, and the three of Empty, Null and 0 stay apart in results.
// 16 bytes: a one-byte kind and a union of a double, an interned text and a counted array pointer.

#include <QString>

#include <cstdint>

namespace vesk {

class CellArray;

class Cell {
public:
    enum class Kind : std::uint8_t { Empty, Null, Number, Text, Array };

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

    // The stored number; texts go through the lenient parse, Empty and Null give 0.
    double toDouble() const;
    // The text as the old runtime would print it: Empty gives "", Null gives "", numbers in
    // shortest round-trip form.
    QString toString() const;
    // The nested array; only valid when isArray().
    const CellArray& array() const;
    CellArray& array();

    // Equality of kind and value (texts compared exactly, arrays by identity of content).
    bool operator==(const Cell& other) const;
    bool operator!=(const Cell& other) const { return !(*this == other); }

private:
    struct ArrayBox;
    void release() noexcept;
    void retain() const noexcept;

    Kind kind_;
    union {
        double num_;
        const QString* text_; // interned: lives for the life of the process
        ArrayBox* arr_;
    };
};

static_assert(sizeof(Cell) == 16, "a cell is 16 bytes");

// The one copy of each distinct text, so that a cell holds only a pointer.
const QString* internText(const QString& text);

} // namespace vesk
