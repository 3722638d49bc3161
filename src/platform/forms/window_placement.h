#pragma once
// The one way a window takes its place in the frame: as a sub-window of the frame's area, or, with
// no area to go to, as a window of its own. Both the window and its sub-window go when closed.

#include <QMdiSubWindow>
#include <QPointer>

class QMdiArea;
class QWidget;

namespace vesk {

// How a sub-window is sized: by the area's guess from the form's size hint, or at the opening size
// the form set for itself (when it set one).
enum class OpeningSize { AreaGuess, FormsOwn };

// Shows `form` as a sub-window of `area` and gives the sub-window back.
QMdiSubWindow* placeInArea(QMdiArea* area, QWidget* form, OpeningSize size);

// A form that is single in the area: shows `form` in place of the one `slot` held before, at its
// own opening size. A null form changes nothing.
void showSingleInArea(QMdiArea* area, QWidget* form, QPointer<QMdiSubWindow>& slot);

// A new window in `parent` when that is an area, otherwise a window of its own over `parent`.
void placeWindow(QWidget* form, QWidget* parent);

// A window opened from `opener`: in the frame's area where the opener stands in one (its own opening
// size kept), a window of its own otherwise.
void placeBesideOpener(QWidget* opener, QWidget* form);

// Brings an open window forward, in the area or on the desktop.
void raiseWindow(QWidget* form);

// A window of which one stands open at a time: the one in `slot` brought forward, or a new one from
// `make()` placed in `parent` (placeWindow) and kept in `slot`.
template <class Window, class Make> Window* openSingle(QPointer<Window>& slot, QWidget* parent, Make make) {
    if (slot) {
        raiseWindow(slot);
        return slot;
    }
    slot = make();
    placeWindow(slot, parent);
    return slot;
}

} // namespace vesk
