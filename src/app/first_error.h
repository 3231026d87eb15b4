// The error that ends a run, of several that threads may meet.
#pragma once

#include <exception>
#include <mutex>
#include <utility>

namespace trikon {

/// Keeps the error that came first, whichever thread it came from; later ones follow from it.
class FirstError {
public:
    void keep(std::exception_ptr error)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (first == nullptr) {
            first = std::move(error);
        }
    }
    /// Throws the error kept, if any.
    void rethrow() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (first != nullptr) {
            std::rethrow_exception(first);
        }
    }

private:
    mutable std::mutex mutex;
    std::exception_ptr first;
};

}  // namespace trikon
