#include "study/forms/five_yr_ag.h"

#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_texts.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vesk {

namespace {
QString t(const char* text) {
    return QString::fromLatin1(text);
}
} // namespace

FiveYrAg::FiveYrAg(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FiveYrAg"));
    setWindowTitle(t(asg_texts::kFiveYrAgCaption));
    auto* top = new QVBoxLayout(this);
    auto* heading = new QLabel(t(asg_texts::kFiveYrAgCaption), this);
    QFont f = heading->font();
    f.setBold(true);
    heading->setFont(f);
    top->addWidget(heading);

    auto* upperRow = new QHBoxLayout;
    upperRow->addWidget(new QLabel(t(asg_texts::kUpperAgeLabel), this));
    cmbUpperAge = new QComboBox(this);
    cmbUpperAge->setObjectName(QStringLiteral("cmbUpperAge"));
    cmbUpperAge->setEditable(true);
    cmbUpperAge->setInsertPolicy(QComboBox::NoInsert);
    for (int a : upperAgeChoices())
        cmbUpperAge->addItem(QString::number(a));
    cmbUpperAge->setCurrentText(QString::number(kUpperAgePreset));
    upperRow->addWidget(cmbUpperAge);
    top->addLayout(upperRow);

    auto* firstYears = new QGroupBox(this);
    auto* fy = new QVBoxLayout(firstYears);
    const char* choices[] = {asg_texts::kChoiceZeroOneFour, asg_texts::kChoiceZeroOneTwoFour,
                             asg_texts::kChoiceZeroToFour};
    const int remembered = static_cast<int>(settings().ChoiceFiveYrs.toDouble());
    for (int i = 0; i < 3; ++i) {
        OptFirstYears[i] = new QRadioButton(t(choices[i]), firstYears);
        OptFirstYears[i]->setObjectName(QStringLiteral("OptFirstYears%1").arg(i));
        OptFirstYears[i]->setChecked(i == (remembered >= 0 && remembered <= 2 ? remembered : 0));
        fy->addWidget(OptFirstYears[i]);
    }
    top->addWidget(firstYears);

    auto* upper = new QGroupBox(t(asg_texts::kUpperAgeIntervalLabel), this);
    auto* ul = new QHBoxLayout(upper);
    OptOpen = new QRadioButton(t(asg_texts::kOpen), upper);
    OptOpen->setObjectName(QStringLiteral("OptOpen"));
    OptClose = new QRadioButton(t(asg_texts::kClose), upper);
    OptClose->setObjectName(QStringLiteral("OptClose"));
    (settings().UpperAgeIntvl.toDouble() == 0 && !settings().UpperAgeIntvl.isEmpty() ? OptClose : OptOpen)
        ->setChecked(true);
    ul->addWidget(OptOpen);
    ul->addWidget(OptClose);
    top->addWidget(upper);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    cmdOK = new QPushButton(tr("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    // Enter in the upper-age field tests the value; it does not press OK.
    cmdOK->setAutoDefault(false);
    cmdCancel = new QPushButton(tr("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    top->addLayout(buttons);

    connect(cmbUpperAge->lineEdit(), &QLineEdit::editingFinished, this, [this] { checkTypedUpperAge(); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { apply(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FirstYears FiveYrAg::choice() const {
    if (OptFirstYears[1]->isChecked())
        return FirstYears::ZeroOneTwoFour;
    if (OptFirstYears[2]->isChecked())
        return FirstYears::ZeroToFour;
    return FirstYears::ZeroOneFour;
}

bool FiveYrAg::checkTypedUpperAge() {
    if (checking_)
        return true;
    const UpperAgeLimits limits = upperAgeLimits();
    const UpperAgeCheck check = vesk::checkTypedUpperAge(cmbUpperAge->currentText(), limits);
    if (check == UpperAgeCheck::Accepted || check == UpperAgeCheck::Blank)
        return true;
    checking_ = true;
    prompts().ask(typedUpperAgeMessage(check, limits), Buttons::Ok, Icon::Warning);
    cmbUpperAge->setEditText(QString());
    checking_ = false;
    return false;
}

bool FiveYrAg::apply() {
    if (!checkTypedUpperAge())
        return false;
    const QString text = cmbUpperAge->currentText();
    const QString message = applyUpperAgeMessage(text);
    if (!message.isEmpty()) {
        prompts().ask(message, Buttons::Ok, Icon::Warning);
        cmbUpperAge->setEditText(QString());
        return false;
    }
    settings().ChoiceFiveYrs = Cell(static_cast<int>(choice()));
    settings().UpperAgeIntvl = Cell(OptOpen->isChecked() ? 1 : 0);
    ages_ = FiveYrAgList(choice(), static_cast<int>(Val(text)));
    accept();
    return true;
}

std::optional<QList<int>> FiveYrAg::chooseAges(QWidget* parent) {
    FiveYrAg dialog(parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.ages();
}

} // namespace vesk
