#include "page/workers.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tarvex::page {

Workers::Workers() {
    constexpr unsigned kMaxThreads = 4;  // then the caller is the slowest
    const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, kMaxThreads);
    try {
        while (threads_.size() < count) {
            threads_.emplace_back([this](const std::stop_token& stop) { Work(stop); });
        }
    } catch (const std::system_error&) {  // fewer do as well
    }
}

std::future<std::string> Workers::Make(std::function<std::string()> text) {
    Task task(std::move(text));
    std::future<std::string> made = task.get_future();
    if (threads_.empty()) {
        task();
        return made;
    }
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    isThereWork_.notify_one();
    return made;
}

void Workers::Work(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (isThereWork_.wait(lock, stop, [this] { return !tasks_.empty(); }) && !stop.stop_requested()) {
        Task task = std::move(tasks_.front());
        tasks_.pop_front();
        lock.unlock();
        task();
        task = Task();  // what it holds goes while nobody waits for the lock
        lock.lock();
    }
}

}  // namespace tarvex::page
