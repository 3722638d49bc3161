#include "platform/cell.h"

#include "platform/cell_array.h"
#include "platform/csv.h"
#include "platform/runtime.h"

#include <atomic>
#include <cmath>
#include <stdexcept>

namespace vesk {

// A nested array is shared between copies of a cell and copied on the first write, so that a cell
// behaves as a value, as arrays in variants did.
struct Cell::ArrayBox {
    std::atomic<int> refs{1};
    CellArray value;
};

// A text, shared by the copies of a cell as its array is; texts never change, so no copy on write.
struct Cell::TextBox {
    std::atomic<int> refs{1};
    QString value;
};

Cell::Cell(const QString& text) : kind_(Kind::Text), text_(new TextBox{{1}, text}) {}

Cell::Cell(const CellArray& array) : kind_(Kind::Array), arr_(new ArrayBox) {
    arr_->value = array;
}

Cell::Cell(CellArray&& array) : kind_(Kind::Array), arr_(new ArrayBox) {
    arr_->value = std::move(array);
}

Cell::Cell(const Cell& other) noexcept : kind_(other.kind_), sub_(other.sub_), num_(other.num_) {
    // Copying num_ copies the whole union; the array pointer then needs one more reference.
    retain();
}

Cell::Cell(Cell&& other) noexcept : kind_(other.kind_), sub_(other.sub_), num_(other.num_) {
    other.kind_ = Kind::Empty;
    other.sub_ = Subtype::Double;
    other.num_ = 0.0;
}

Cell& Cell::operator=(const Cell& other) noexcept {
    if (this != &other) {
        other.retain();
        release();
        kind_ = other.kind_;
        sub_ = other.sub_;
        num_ = other.num_;
    }
    return *this;
}

Cell& Cell::operator=(Cell&& other) noexcept {
    if (this != &other) {
        release();
        kind_ = other.kind_;
        sub_ = other.sub_;
        num_ = other.num_;
        other.kind_ = Kind::Empty;
        other.sub_ = Subtype::Double;
        other.num_ = 0.0;
    }
    return *this;
}

Cell::~Cell() {
    release();
}

void Cell::retain() const noexcept {
    if (kind_ == Kind::Array)
        arr_->refs.fetch_add(1, std::memory_order_relaxed);
    else if (kind_ == Kind::Text)
        text_->refs.fetch_add(1, std::memory_order_relaxed);
}

void Cell::release() noexcept {
    if (kind_ == Kind::Array && arr_->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete arr_;
    else if (kind_ == Kind::Text && text_->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete text_;
}

double Cell::toDouble() const {
    switch (kind_) {
    case Kind::Number:
        return num_;
    case Kind::Text:
        return Val(text_->value);
    default:
        return 0.0;
    }
}

QString Cell::toString() const {
    switch (kind_) {
    case Kind::Number:
        if (sub_ == Subtype::Boolean)
            return num_ != 0.0 ? QStringLiteral("True") : QStringLiteral("False");
        if (sub_ == Subtype::Date) {
            const QDateTime when = serialToDateTime(num_);
            if (!when.isValid()) // no calendar date: the serial as a number
                return numberToText(num_);
            return when.time() == QTime(0, 0) ? when.date().toString(QStringLiteral("yyyy-MM-dd"))
                                              : when.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
        }
        if (sub_ == Subtype::Single)
            return numberToText(static_cast<double>(QString::number(num_, 'g', 7).toDouble()));
        return numberToText(num_);
    case Kind::Text:
        return text_->value;
    default:
        return QString();
    }
}

const CellArray& Cell::array() const {
    if (kind_ != Kind::Array)
        throw std::logic_error("cell holds no array");
    return arr_->value;
}

CellArray& Cell::array() {
    if (kind_ != Kind::Array)
        throw std::logic_error("cell holds no array");
    if (arr_->refs.load(std::memory_order_acquire) > 1) {
        auto* copy = new ArrayBox;
        copy->value = arr_->value;
        release();
        arr_ = copy;
    }
    return arr_->value;
}

bool Cell::operator==(const Cell& other) const {
    if (kind_ != other.kind_)
        return false;
    switch (kind_) {
    case Kind::Number:
        return sub_ == other.sub_ && num_ == other.num_;
    case Kind::Text:
        return text_ == other.text_ || text_->value == other.text_->value;
    case Kind::Array:
        return arr_ == other.arr_ || arr_->value == other.arr_->value;
    default:
        return true;
    }
}

namespace {
// 30 December 1899 as a Julian day number: a constant, so that serials work during static
// initialisation too.
constexpr qint64 kDayZeroJulian = 2415019;
constexpr double kMsPerDay = 86400000.0;
} // namespace

double dateSerial(const QDate& day) {
    return static_cast<double>(day.toJulianDay() - kDayZeroJulian);
}

double dateSerial(const QDateTime& when) {
    const double days = dateSerial(when.date());
    const double frac = when.time().msecsSinceStartOfDay() / kMsPerDay;
    // Before day 0 the runtime keeps the time as a positive fraction: -1.25 is 29 Dec 1899 06:00.
    return days < 0 ? days - frac : days + frac;
}

QDateTime serialToDateTime(double serial) {
    // A billion days either way is far beyond any calendar date and well inside what QDate and
    // the whole-day arithmetic below can hold.
    if (!std::isfinite(serial) || std::fabs(serial) >= 1e9)
        return QDateTime();
    const double whole = serial < 0 ? std::ceil(serial) : std::floor(serial);
    const double frac = std::fabs(serial - whole);
    qint64 ms = std::llround(frac * kMsPerDay);
    QDate day = QDate::fromJulianDay(kDayZeroJulian + static_cast<qint64>(whole));
    if (ms >= static_cast<qint64>(kMsPerDay)) { // rounding reached the next midnight
        ms = 0;
        day = day.addDays(serial < 0 ? -1 : 1);
    }
    return QDateTime(day, QTime::fromMSecsSinceStartOfDay(static_cast<int>(ms)));
}

QString valueText(const Cell& v) {
    const QString text = v.toString();
    if (!v.isNumber() || v.isBoolean() || v.isDate() || v.isSingle() || !std::isfinite(v.toDouble()))
        return text;
    bool ok = false;
    return text.toDouble(&ok) == v.toDouble() && ok ? text : shortestNumber(v.toDouble());
}

} // namespace vesk
