#pragma once
// What Study Setup accepts while the user types: the study id, the study title and the year field.
//
// A study id becomes the name of a column of the cause dictionary (_DctBDM), so it starts with a
// letter and holds letters and digits only (at most five of them); a title does not begin with a
// blank. The year field holds one four-digit year, a list of them separated by commas or line
// breaks, or a range "1995-1999" whose first year is not after its last; list items may be ranges.

#include <QList>
#include <QString>
#include <optional>

namespace vesk {

inline constexpr int kStudyIdMaxLength = 5;

// The message for `key` typed into the study id so that it stands at `position` (0-based), or an
// empty text when the key is taken: "The StudyId should start with a character" for a digit in
// front, "No data other than alphabets and Numerics is allowed " for anything but a letter or a
// digit (letters of the English alphabet only, as a column name needs).
QString studyIdKeyMessage(QChar key, int position);
// The same for a whole text (a paste): the message of its first refused character, or empty.
QString studyIdTextMessage(const QString& text);
// A study id fit to be a column name: a letter, then letters and digits, at most five in all.
bool isValidStudyId(const QString& id);

// "The Studytitle should not begin with the space" for a blank typed in front; empty otherwise.
QString studyTitleKeyMessage(QChar key, int position);

// The years of the year field, sorted and without repeats; std::nullopt when the text does not
// follow the grammar ("Not a valid Entry for Date"). A blank text gives std::nullopt as well.
std::optional<QList<int>> parseStudyYears(const QString& text);
// FiveYearAgeGroup(n): the lower ages 0, 1, 5, 10, ... 5n (0 and 1 alone for n below 1).
QList<int> FiveYearAgeGroup(int n);

// The years as the year field shows them: runs of consecutive years as ranges, joined by commas.
QString formatStudyYears(const QList<int>& years);

} // namespace vesk
