#include "model/database/write_queue.h"

#include <utility>

namespace kaldex {

namespace {

// Enough to ride out a pause of either side.
constexpr std::size_t kMostUnfinished = 16;

bool hasProcessorToSpare() {
  static const bool answer = std::thread::hardware_concurrency() > 1;
  return answer;
}

}  // namespace

WriteQueue::~WriteQueue() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    ending_ = true;
  }
  came_.notify_one();
  thread_.join();
}

void WriteQueue::submit(std::unique_ptr<Work> work) {
  if (!hasProcessorToSpare()) return work->run();
  if (!thread_.joinable()) thread_ = std::thread([this] { serve(); });
  {
    std::unique_lock<std::mutex> lock(mutex_);
    done_.wait(lock, [this] { return unfinished_ < kMostUnfinished; });
    if (failure_ != nullptr) rethrow(lock);
    waiting_.push_back(std::move(work));
    ++unfinished_;
    unsettled_.store(true, std::memory_order_release);
  }
  came_.notify_one();
}

void WriteQueue::settleNow() {
  std::unique_lock<std::mutex> lock(mutex_);
  done_.wait(lock, [this] { return unfinished_ == 0; });
  unsettled_.store(false, std::memory_order_release);
  if (failure_ != nullptr) rethrow(lock);
}

void WriteQueue::rethrow(std::unique_lock<std::mutex>& lock) {
  const std::exception_ptr failure = std::exchange(failure_, nullptr);
  lock.unlock();
  std::rethrow_exception(failure);
}

void WriteQueue::waitNow() noexcept {
  std::unique_lock<std::mutex> lock(mutex_);
  done_.wait(lock, [this] { return unfinished_ == 0; });
}

void WriteQueue::abandon() noexcept {
  std::unique_lock<std::mutex> lock(mutex_);
  unfinished_ -= waiting_.size();
  waiting_.clear();
  done_.wait(lock, [this] { return unfinished_ == 0; });
  failure_ = nullptr;
  unsettled_.store(false, std::memory_order_release);
}

void WriteQueue::serve() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    came_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    std::unique_ptr<Work> work = std::move(waiting_.front());
    waiting_.pop_front();
    const bool wanted = failure_ == nullptr;
    lock.unlock();
    if (wanted) perform(*work);
    // What the work holds goes before the caller may believe that it is done.
    work.reset();
    lock.lock();
    --unfinished_;
    done_.notify_one();
  }
}

void WriteQueue::perform(Work& work) noexcept {
  try {
    work.run();
  } catch (...) {
    const std::lock_guard<std::mutex> lock(mutex_);
    failure_ = std::current_exception();
  }
}

}  // namespace kaldex
