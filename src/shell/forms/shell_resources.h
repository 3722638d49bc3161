#pragma once
// The pictures of the shell (shell.qrc) live in a static library, whose resources must be registered
// by hand before their first use.

namespace vesk {
void initShellResources();
} // namespace vesk
