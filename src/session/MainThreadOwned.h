#pragma once

#include <memory>
#include <utility>

#include "platform/threads/Dispatch.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// A shared object that is always destroyed on the main thread: if the last reference is dropped elsewhere, it goes to
/// the main queue.
template <typename Object, typename... Arguments>
std::shared_ptr<Object> makeMainThreadOwned(Dispatch& dispatch, Threads& threads, Arguments&&... arguments) {
    auto object = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
    return std::shared_ptr<Object>(object.release(), [&dispatch, &threads](Object* last) {
        std::unique_ptr<Object> owned(last);
        if (threads.isMainThread()) return;
        // A block must be copyable; a unique_ptr is not.
        auto shared = std::make_shared<std::unique_ptr<Object>>(std::move(owned));
        dispatch.mainQueue().async([shared = std::move(shared)] { shared->reset(); });
    });
}

}  // namespace vantrel
