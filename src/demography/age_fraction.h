#pragma once
// Where in its age interval a death of an age-sex group is taken to occur: a label such as "F0-4"
// or "M80-w" and a fraction of the interval give the exact age of death. The label's lower age L is
// the digits after the sex letter up to the hyphen; its upper bound H the digits after the hyphen
// plus 1, or none for a label ending in "w" (the open group). The exact age is L + fraction·(H - L),
// and L itself for the open group.

#include <QString>
#include <optional>

namespace vesk {

struct AgeGroupBounds {
    double lower = 0;
    std::optional<double> upper; // none for the open group
};

// std::nullopt for a label that is no age-sex group ("", "X", "F-4").
std::optional<AgeGroupBounds> ageGroupBounds(const QString& label);

// std::nullopt for a label that is no group or a fraction outside 0 to 1.
std::optional<double> exactAgeOfDeath(const QString& label, double fraction);

} // namespace vesk
