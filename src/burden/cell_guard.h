#pragma once
// One statement of a long loop, guarded as the old error handlers did with "resume next": a run-time
// failure goes to the error store under the routine's name, what the statement was assigning stays
// unset, and the loop goes on.

#include "foundation/error_store.h"
#include "foundation/runtime_error.h"

#include <QString>
#include <stdexcept>

namespace vesk {

template <class Statement> void guarded(const char* source, Statement&& statement) {
    try {
        statement();
    } catch (const RuntimeError& e) {
        ErrorStore(e.number, e.words, QString::fromLatin1(source));
    } catch (const std::out_of_range&) {
        ErrorStore(runtime_error::kSubscriptOutOfRange, runtimeWords(runtime_error::kSubscriptOutOfRange),
                   QString::fromLatin1(source));
    }
}

} // namespace vesk
