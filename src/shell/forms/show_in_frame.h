#pragma once
// Forms that live inside the frame's area, one of each at a time.

#include <QMdiSubWindow>
#include <QPointer>

namespace vesk {

class FRMMAINMENU;

// Shows `form` in the frame's area (at its own opening size when it set one), in place of the one
// `slot` held before (a form is single). Both the form and its sub-window go when closed.
void showInFrame(FRMMAINMENU& frame, QWidget* form, QPointer<QMdiSubWindow>& slot);

} // namespace vesk
