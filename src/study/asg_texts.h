#pragma once
// The words of the age-sex group routines and of the age-interval dialog, kept to the letter.

#include "platform/texts.h"

namespace vesk::asg_texts {

// ASGDfn and its callers.
inline constexpr const char* kAsgDfnError = "Error from ASGDfn :  ";
inline constexpr const char* kAgdArrError =
    "Message from AGDARR : Could not build Age Sex groups, Check ASGDfn function";
inline constexpr const char* kNoAgeDefinitions = "Please define Age definitions for Current Study";

// The row rule of the age entry grids.
inline constexpr const char* kRowRule =
    "Age gruop defination must satisfy many to one or one to many  relation ship between  the sets "
    "for YLL YLD DALY . This requires that figures in the same row of three set either match are "
    "some cells remain blank ";

// The feasibility rule.
inline constexpr const char* kNotFeasible =
    "The Age Groups Entered are not Feesable for maping, Please enter again";
inline constexpr const char* kFeasibilityTitle = "Feesability Check";

// The age-interval dialog FiveYrAg.
inline constexpr const char* kFiveYrAgCaption = "Define Age Interval";
inline constexpr const char* kUpperAgeLabel = "Upper/Last Age Group";
inline constexpr const char* kFirstYearsLabel = "First Years";
inline constexpr const char* kChoiceZeroOneFour = "0 , 1 -4 ";
inline constexpr const char* kChoiceZeroOneTwoFour = "0 , 1 , 2-4 ";
inline constexpr const char* kChoiceZeroToFour = "0 - 4";
inline constexpr const char* kUpperAgeIntervalLabel = "Upper Age Interval";
inline constexpr const char* kOpen = "Open";
inline constexpr const char* kClose = "Close";
inline constexpr const char* kOutOfRangeStart = "Entered value should be Greater than ";
inline constexpr const char* kOutOfRangeMiddle = " less than ";
inline constexpr const char* kOutOfRangeEnd =
    " Please check Misc Tab/Preferences form for MinmaxAge or MaxMaxAge";
inline constexpr const char* kNotDivisibleTyped = " The entered value should be divisble by 5";
inline constexpr const char* kNotDivisibleApply = "The upper Age limit should be Divisible by 5";
inline constexpr const char* kFillUpperAge = "please fill  Upper/Last Age Group";

// The pop-up entries of the age grids.
inline constexpr const char* kFiveAgeGroup = "Five Age Group";
inline constexpr const char* kSevenAgeGroup = "Seven Age Group";
inline constexpr const char* kFiveYearAgeGroup = "Five Year Age Group";

} // namespace vesk::asg_texts
