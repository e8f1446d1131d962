// Several files of one piece of work: written beside their places while the work goes on, and put
// in place in their order when it is done.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/FileSystem.h"

namespace torvane::platform {

class FileBatch {
 public:
  /// Two: a second thread writes what is added, in the order of adding.
  enum class Threads { One, Two };

  /// `files` must outlive the batch.
  FileBatch(FileSystem& files, Threads threads) : files_(files), threads_(threads) {}
  /// What is not in its place leaves no trace.
  ~FileBatch();
  FileBatch(const FileBatch&) = delete;
  FileBatch& operator=(const FileBatch&) = delete;

  /// A file for PutInPlace. `next` runs in either thread; what it reads must stay as it is until
  /// Write is over.
  void Add(int place, std::string path, FileSystem::PartSource next);

  /// Comes back when every file is written or has failed; writes its share of them.
  void Write();

  /// Puts the files up to this place in place, in the order of their places, then of adding. Throws
  /// what kept the first one from being written. After Write.
  void PutInPlace(int last);

 private:
  struct Job {
    int Place = 0;
    std::string Path;
    FileSystem::PartSource Next;
    std::unique_ptr<NewFile> File;
    std::exception_ptr Fault;
  };

  void Start();
  void Work(bool wait);
  void WriteOne(Job& job);
  void End(bool drop);

  FileSystem& files_;
  Threads threads_;
  std::deque<Job> jobs_;   ///< a job stays where it is
  std::size_t taken_ = 0;  ///< jobs that a thread has begun
  bool complete_ = false;  ///< no further job comes
  std::mutex lock_;        ///< of the three above
  std::condition_variable changed_;
  std::thread second_;
};

}  // namespace torvane::platform
