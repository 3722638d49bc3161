#pragma once
// What the input sheets need of the current study, loaded by the checks the Inputs window makes when
// it opens, in their order and with their messages: the study and its year (the study's loader),
// the generic word for a unit (the aggregate scheme), the age definitions and their labels, the
// units, and the causes with their names and sequelae.

#include "database/study_context.h"
#include "inputs/cause_sheet.h"
#include "inputs/weights_sheet.h"

#include <QList>
#include <QStringList>
#include <optional>

namespace vesk {

struct InputsStudy {
    QString studyId;
    QString title;
    int year = 0;
    QString term;            // the scheme's word for a unit, "District"
    QList<double> pndAges;   // the lower ages of the PND set, ascending as defined
    QStringList yllLabels;   // female labels, then male ones
    QStringList yldLabels;
    QStringList units;       // BPU ids, in their order of priority
    QStringList unitNames;   // their names, in the same order
    QList<StudyCause> causes; // in code order
    QList<QStringList> sequelae; // per cause, the codes of its sequelae (empty without)
};

// The checks in order; nothing when one failed, its message shown. Loads the context on the way.
std::optional<InputsStudy> openInputsStudy(StudyContext& context);

// The rows of the weights sheet: a cause without sequelae under its own code, a cause with them
// once for each sequela, under the sequela's code.
QList<WeightRow> weightRowsOf(const InputsStudy& study);

// "Inputs: " + study + " (" + year + ")".
QString inputsCaption(const InputsStudy& study);

} // namespace vesk
