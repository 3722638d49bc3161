#include "shell/forms/shell_resources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE may not stand inside a namespace.
static void initShellQrc() {
    Q_INIT_RESOURCE(shell);
}

namespace vesk {

void initShellResources() {
    static const bool done = (initShellQrc(), true);
    (void)done;
}

} // namespace vesk
