#include "page/workers.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace tarvex::page {

namespace {

unsigned UsualThreads() {
    constexpr unsigned kMost = 4;  // then the caller is the slowest
    return std::clamp(std::thread::hardware_concurrency(), 2U, kMost + 1) - 1;
}

}  // namespace

Workers::Workers() : Workers(UsualThreads()) {}

Workers::Workers(unsigned threads) {
    try {
        while (threads_.size() < threads) {
            threads_.emplace_back([this](const std::stop_token& stop) { Work(stop); });
        }
    } catch (const std::system_error&) {  // fewer do as well
    }
}

Workers::~Workers() {
    const std::lock_guard lock(mutex_);
    tasks_.clear();
}

std::future<std::string> Workers::Make(std::function<std::string()> text) {
    Task task(std::move(text));
    std::future<std::string> made = task.get_future();
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    isThereWork_.notify_one();
    return made;
}

std::string Workers::Get(std::future<std::string>& text) {
    using std::chrono_literals::operator""s;
    while (text.wait_for(0s) != std::future_status::ready && Help()) {
    }
    return text.get();
}

/// Makes one of the texts that wait; false when there is none.
bool Workers::Help() {
    Task task;
    {
        const std::lock_guard lock(mutex_);
        if (tasks_.empty()) {
            return false;
        }
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task();
    return true;
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
