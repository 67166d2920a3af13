/// Work beside the caller's.

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarvex::page {

/// Makes texts in a few threads that stay, so that the memory of one text is there for the next.
class Workers {
  public:
    /// As many as the machine has processors beside the caller's, up to a few.
    Workers();
    /// Where there are no threads, or the machine gives none, the caller does all in `Get`.
    explicit Workers(unsigned threads);
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    /// Waits for what is being made; what waits is not made any more.
    ~Workers();

    /// Texts are begun in the order of the calls. The future throws what `text` throws.
    std::future<std::string> Make(std::function<std::string()> text);

    /// The text of a call of `Make`. While it is not there, the caller makes some of those that wait.
    std::string Get(std::future<std::string>& text);

  private:
    using Task = std::packaged_task<std::string()>;

    void Work(const std::stop_token& stop);
    bool Help();

    std::mutex mutex_;
    std::condition_variable_any isThereWork_;
    std::deque<Task> tasks_;  // that wait
    std::vector<std::jthread> threads_;
};

}  // namespace tarvex::page
