#pragma once
// Progress of a long operation: the frame's one bar and label, or a form's own. The core sets
// range, value and text; the forms draw them and let the display refresh.

#include <QList>
#include <QString>

namespace vesk {

class Progress {
public:
    virtual ~Progress() = default;
    virtual void setRange(int minimum, int maximum) = 0;
    virtual void setValue(int value) = 0;
    virtual void setText(const QString& text) = 0;
    virtual void setVisible(bool visible) = 0;
};

// Remembers what it was told; the default before a frame exists, and the double of tests.
class RecordingProgress : public Progress {
public:
    void setRange(int minimum, int maximum) override {
        min = minimum;
        max = maximum;
    }
    void setValue(int v) override {
        value = v;
        values.push_back(v);
    }
    void setText(const QString& t) override { text = t; }
    void setVisible(bool v) override { visible = v; }

    int min = 0, max = 100, value = 0;
    QString text;
    bool visible = false;
    QList<int> values;
};

// The frame's bar; a recording one until the frame installs its own.
Progress& progress();
void setProgress(Progress* p); // not owned; nullptr goes back to the default

} // namespace vesk
