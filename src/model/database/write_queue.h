#ifndef KALDEX_MODEL_WRITE_QUEUE_H
#define KALDEX_MODEL_WRITE_QUEUE_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace kaldex {

/// Writes into the database on a thread of its own, in the order in which they came, while the caller makes
/// what comes next: reading a file and storing it cost about the same, so a bulk load takes little more than
/// the longer of the two. The thread begins with the first work; on a single processor all is done at once by
/// the caller.
///
/// A failure is kept and thrown by the caller's next `submit` or `settle`, once; the work behind it is
/// dropped.
class WriteQueue {
 public:
  class Work {
   public:
    virtual ~Work() = default;
    virtual void run() = 0;
  };

  WriteQueue() = default;
  WriteQueue(const WriteQueue&) = delete;
  WriteQueue& operator=(const WriteQueue&) = delete;
  ~WriteQueue();

  /// Waits while the queue is full, so that memory stays flat.
  void submit(std::unique_ptr<Work> work);
  /// Until all that was submitted is done. Cheap when nothing is under way.
  void settle() {
    if (unsettled_.load(std::memory_order_acquire)) settleNow();
  }
  /// As settle; a failure stays for the next one.
  void wait() noexcept {
    if (unsettled_.load(std::memory_order_acquire)) waitNow();
  }
  /// Drop what has not begun and forget a failure: it is rolled back.
  void abandon() noexcept;

 private:
  void settleNow();
  void waitNow() noexcept;
  void rethrow(std::unique_lock<std::mutex>& lock);
  void serve();
  void perform(Work& work) noexcept;

  std::thread thread_;
  std::mutex mutex_;
  std::condition_variable came_, done_;
  std::deque<std::unique_ptr<Work>> waiting_;
  std::size_t unfinished_ = 0;  ///< waiting and under way
  bool ending_ = false;
  std::exception_ptr failure_;
  /// Whether the caller has something to wait for or to be told.
  std::atomic<bool> unsettled_{false};
};

}  // namespace kaldex

#endif
