#include "platform/FileBatch.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace torvane::platform {

FileBatch::~FileBatch() { End(true); }

void FileBatch::Add(int place, std::string path, FileSystem::PartSource next) {
  {
    const std::scoped_lock guard(lock_);
    jobs_.push_back({place, std::move(path), std::move(next), nullptr, nullptr});
  }
  Start();
  changed_.notify_one();
}

void FileBatch::Start() {
  if (threads_ == Threads::One || second_.joinable()) return;
  try {
    second_ = std::thread([this] { Work(true); });
  } catch (const std::system_error&) {
    threads_ = Threads::One;  // a machine that is short of threads writes with the one it has
  }
}

/// Writes jobs until there are none, or until no further one comes.
void FileBatch::Work(bool wait) {
  std::unique_lock guard(lock_);
  while (true) {
    if (wait) changed_.wait(guard, [this] { return taken_ < jobs_.size() || complete_; });
    if (taken_ >= jobs_.size()) return;
    Job& job = jobs_[taken_++];
    guard.unlock();
    WriteOne(job);
    guard.lock();
  }
}

void FileBatch::WriteOne(Job& job) {
  try {
    job.File = files_.WriteBeside(job.Path, job.Next);
  } catch (...) {
    job.Fault = std::current_exception();
  }
}

void FileBatch::End(bool drop) {
  {
    const std::scoped_lock guard(lock_);
    complete_ = true;
    if (drop) taken_ = jobs_.size();
  }
  changed_.notify_one();
  if (!drop) Work(false);
  if (second_.joinable()) second_.join();
}

void FileBatch::Write() { End(false); }

void FileBatch::PutInPlace(int last) {
  std::vector<Job*> jobs;
  jobs.reserve(jobs_.size());
  for (Job& job : jobs_) jobs.push_back(&job);
  std::stable_sort(jobs.begin(), jobs.end(),
                   [](const Job* left, const Job* right) { return left->Place < right->Place; });
  for (Job* const job : jobs) {
    if (job->Place > last) return;
    if (job->Fault != nullptr) std::rethrow_exception(job->Fault);
    if (job->File == nullptr) continue;
    job->File->PutInPlace();
    job->File.reset();
  }
}

}  // namespace torvane::platform
