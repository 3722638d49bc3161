#pragma once
// The calculators' own words: captions, heads and messages, kept to the letter.

#include "platform/texts.h"

#include <QString>
#include <array>

namespace vesk::calculator_texts {

// The one text() of every texts header, for the places that name it as this header's own.
using vesk::text;

// Captions.
inline constexpr const char* kFormCaption = "Calculator";
inline constexpr const char* kYllCaption = "YLL Calculator";
inline constexpr const char* kIyldCaption = "IYLD Calculator";
inline constexpr const char* kPyldCaption = "PYLD Calculator";
inline constexpr const char* kDalyCaption = "DALY Calculator";

// Controls.
inline constexpr const char* kDefineAgeIntervals = "Define Age intervals";
inline constexpr const char* kBuildAgeIntervals = "Build Age Intervals";
inline constexpr const char* kUserIdentification = "User Indentification";
inline constexpr const char* kCause = "Cause";
inline constexpr const char* kDecimalPlaces = "Decimal Places";
inline constexpr const char* kComputeYlls = "Compute YLLs";
inline constexpr const char* kComputeIylds = "Compute IYLDs";
inline constexpr const char* kComputePylds = "Compute PYLDs";
inline constexpr const char* kComputeDalys = "Compute DALYs";
inline constexpr const char* kInputData = "Input Data";
inline constexpr const char* kClose = "Close";
inline constexpr const char* kFeasibilityOption = "Feesability Option";
inline constexpr const char* kAgeHead = "Age";
inline constexpr const char* kAsgHead = "ASG";
inline constexpr const char* kYldSide = "YLD";
inline constexpr const char* kYllSide = "YLL";

// Grid titles and the input heads after the age label.
inline constexpr const char* kYllTitle = "Data Inputs and Results";
inline constexpr const char* kYldTitle = "Epidemiological Data Input Sheet for YLD";
inline constexpr const char* kDeaths = "Deaths";
inline constexpr const char* kAgeAtDeath = "Age at Death";
inline constexpr const char* kAgeAtOnset = "Age at onset";
inline constexpr const char* kDuration = "Duration";
inline constexpr const char* kDisabilityWeight = "Disablity Weight";
inline constexpr const char* kIncidentCases = "Incident Cases";
inline constexpr const char* kPrevalentCases = "Prevalance Cases";
inline constexpr const char* kAgeOfPrevalentCases = "Age of Prevelant Cases";
inline constexpr const char* kCases = "Cases";

// Result heads: prefix "[" r "," K "]".
inline constexpr const char* kYllPrefix = "YLL";
inline constexpr const char* kIyldPrefix = "IYLD";
inline constexpr const char* kPyldPrefix = "PYLD";
inline constexpr const char* kDalyPrefix = "DALY";

// Messages.
inline constexpr const char* kRBetweenZeroAndOne = "The value should be between 0 and 1";
inline constexpr const char* kTitleVesk = "VESK";
inline constexpr const char* kNotValidEntryData = "Not a Valid Entry";
inline constexpr const char* kNotValidEntryAge = "Not a valid entry";
inline constexpr const char* kFillAgeDefinition = "Please fill the Age definition";
inline constexpr const char* kFillYllAsg = "Please fill the Yll  ASG";
inline constexpr const char* kFillYldAsg = "Please fill the YLD  ASG";
inline constexpr const char* kUnexpectedError = "Unexpected error. Quiting..";
inline constexpr const char* kDoNotMap =
    "The data you have entered in YLL and YLd do not map. Please enter the proper data";
inline constexpr const char* kBadAgd = "Please enter the currect AGD values";
inline constexpr const char* kBadOnset = "Please enter the currect Age at Onset values";
inline constexpr const char* kSelectDap = "Please select the r,k, Beta,c values from the list";
inline constexpr const char* kYllCalculatorError = "Error from Yll Calculator: ";
inline constexpr const char* kYllCalculatorTitle = "YLL Calculator";
inline constexpr const char* kNotFeasible =
    "!!! The Asg you have entered are not feesable. Please Enter valid asgs  !!!";
inline constexpr const char* kFeasibilityTitle = "Feesability Check";
inline constexpr const char* kSelectDapDaly = "Please select r,k,Beta and c values from the list";
inline constexpr const char* kFillRequiredInput = "Please fill the Requried input and then compute DALYs";
inline constexpr const char* kHelpYll = "Yet to be developed";
inline constexpr const char* kHelpDaly = "Option not available";
inline constexpr const char* kNoUserLifeTable = "There is no User defined Life Table ";
inline constexpr const char* kLifeTableTitle = "Life Table";

// The number formats offered for 0 to 10 decimal places.
inline constexpr std::array<const char*, 11> kDecimalFormats{
    "0",         "##.0",       "##.00",       "##.000",       "##.0000",      "##.00000",
    "##.000000", "##.0000000", "##.00000000", "##.000000000", "##.0000000000"};

} // namespace vesk::calculator_texts
