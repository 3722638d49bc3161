#pragma once
// The quick-fill lists of the age entry grids, and the checks of the upper age typed into the
// age-interval dialog FiveYrAg ("Define Age Interval").
//
//   FiveYrAg "0 , 1 -4 "      0, 1, 5, 10, ... upper
//   FiveYrAg "0 , 1 , 2-4 "   0, 1, 2, 5, 10, ... upper
//   FiveYrAg "0 - 4"          0, 5, 10, ... upper
//   pop-up "Five Age Group"   0, 5, 15, 45, 60
//   pop-up "Seven Age Group"  0, 5, 15, 30, 45, 60, 70
//
// Every list ends open in its labels: the upper age is the lower age of the last, open group, whether
// the dialog says "Open" or "Close".

#include "foundation/settings.h"

#include <QList>
#include <QString>

namespace vesk {

// The first-years choices of FiveYrAg, as remembered in [Choice For Five Years].
enum class FirstYears { ZeroOneFour = 0, ZeroOneTwoFour = 1, ZeroToFour = 2 };

QList<int> FiveYrAgList(FirstYears choice, int upper);
QList<int> FiveAgeGroupList();
QList<int> SevenAgeGroupList();

// The choices offered by the field "Upper/Last Age Group": 45, 50, ... 85, with 85 preset.
QList<int> upperAgeChoices();
inline constexpr int kUpperAgePreset = 85;

// The limits of the upper age: IMINMAXAGE and IMAXMAXAGE, both 45 and 85 whenever either is 0.
struct UpperAgeLimits {
    int min = 45;
    int max = 85;
};
UpperAgeLimits upperAgeLimits(const VeskSettings& s = settings());

enum class UpperAgeCheck { Accepted, Blank, OutOfRange, NotDivisible };

// The test of a value typed into "Upper/Last Age Group", limits included (45 and 85 pass). A text is
// read by the lenient parse, so a text with no number counts as 0.
UpperAgeCheck checkTypedUpperAge(const QString& text, const UpperAgeLimits& limits);
// The message of a typed value that fails: "Entered value should be Greater than " min " less than "
// max, a line break and " Please check Misc Tab/Preferences form for MinmaxAge or MaxMaxAge", or
// " The entered value should be divisble by 5".
QString typedUpperAgeMessage(UpperAgeCheck check, const UpperAgeLimits& limits);

// The test on apply: "please fill  Upper/Last Age Group" for a blank field, "The upper Age limit
// should be Divisible by 5" for a value that is not a multiple of 5; an empty text when it passes.
QString applyUpperAgeMessage(const QString& text);

} // namespace vesk
