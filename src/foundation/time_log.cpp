#include "foundation/time_log.h"

#include "foundation/settings.h"
#include "platform/runtime.h"

#include <QDateTime>
#include <QTextStream>

namespace vesk {

QString timePhaseLiteral(TimePhase phase) {
    // Indexed by TimePhase.
    static constexpr const char* kLiterals[] = {
        "Loading population and Mortality data to Memory...  =  ",
        "Loading Cause of Death data into Memory... =  ",
        "Loading Epidemiological Data into Memory...  =  ",
        "Computing YLD,YLL,DALY... =  ",
        "Storing YLD Results into Table... =  ",
        "Storing YLL Results into Table... =  ",
        "Storing DALY Results into Table... =  ",
    };
    return QString::fromLatin1(kLiterals[static_cast<int>(phase)]);
}

QString timeLogPath() {
    return settings().StatOutPath + QStringLiteral("Time.stp");
}

TimeLog::TimeLog(std::function<double()> seconds) : seconds_(std::move(seconds)) {
    clock_.start();
    if (!seconds_)
        seconds_ = [this] { return clock_.elapsed() / 1000.0; };
}

TimeLog::~TimeLog() {
    finish();
}

bool TimeLog::start() {
    const QDateTime now = QDateTime::currentDateTime();
    lines_ = {QStringLiteral("Start Application  = [Date: ") + now.toString(QStringLiteral("dd/MM/yyyy")) +
              QStringLiteral(" And Time: ") + now.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral(" ]")};
    last_ = seconds_();
    file_.setFileName(timeLogPath());
    if (!file_.open(QIODevice::Append))
        return false;
    QTextStream(&file_) << lines_.first() << "\r\n";
    return true;
}

void TimeLog::mark() {
    last_ = seconds_();
}

void TimeLog::phase(TimePhase phase) {
    const double now = seconds_();
    lines_ << timePhaseLiteral(phase) + numberToText(roundHalfEven(now - last_, 2));
    if (file_.isOpen())
        QTextStream(&file_) << lines_.last() << "\r\n";
    last_ = now;
}

void TimeLog::finish() {
    if (file_.isOpen())
        file_.close();
}

} // namespace vesk
