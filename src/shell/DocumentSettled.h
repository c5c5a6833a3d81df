#pragma once
// For the files that define the Document's commands: runs an engine
// operation on the sheet, then settles what it changed (the row count, the
// dirty flag, the listeners).
#include <cstdint>
#include <type_traits>

#include "shell/Document.h"

namespace synthara::shell {

template <typename Op>
auto Document::Settled(Op&& op) {
    const std::uint64_t revision = sheet_.Flex().Revision();
    const bool wasDirty = project_.SheetDirty;
    if constexpr (std::is_void_v<decltype(op())>) {
        op();
        Settle(revision, wasDirty);
    } else {
        auto result = op();
        Settle(revision, wasDirty);
        return result;
    }
}

}  // namespace synthara::shell
