// The one file that knows how a stack is switched.
#include "platform/Activities.h"

#include <algorithm>
#include <boost/context/fiber.hpp>
#include <exception>
#include <new>
#include <utility>

#include <cxxabi.h>
#include <sys/mman.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define TORVANE_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TORVANE_ADDRESS_SANITIZER 1
#endif
#endif
#ifdef TORVANE_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#include <sanitizer/common_interface_defs.h>
#endif

namespace torvane::platform {

namespace {

using boost::context::fiber;

/// Leaves a handler whose wait is given up. No std::exception on purpose: nobody else catches it.
struct GivenUp {};

/// What the C++ runtime knows of exceptions that are being thrown or handled. It keeps it by
/// thread; it belongs to the stack, or a wait inside a catch block would mix up two of them.
struct ExceptionState {
  void* Caught = nullptr;
  unsigned int Uncaught = 0;

  static ExceptionState& OfThread() {
    return *reinterpret_cast<ExceptionState*>(abi::__cxa_get_globals());
  }
};

/// What the address sanitizer is told of a stack before and after the thread moves to it.
struct StackMark {
  const void* Bottom = nullptr;
  std::size_t Size = 0;
  void* Kept = nullptr;

#ifdef TORVANE_ADDRESS_SANITIZER
  /// `leaving` keeps what the sanitizer holds of the stack that is left; null when it is left for
  /// good.
  static void Begin(StackMark* leaving, const StackMark& to) {
    __sanitizer_start_switch_fiber(leaving == nullptr ? nullptr : &leaving->Kept, to.Bottom,
                                   to.Size);
  }
  /// On the stack that was come back to; `from` learns which one was left.
  static void End(void* kept, StackMark& from) {
    __sanitizer_finish_switch_fiber(kept, &from.Bottom, &from.Size);
  }
#else
  static void Begin(StackMark* /*leaving*/, const StackMark& /*to*/) {}
  static void End(void* /*kept*/, StackMark& /*from*/) {}
#endif
};

/// Stacks straight from the system, with a page below them that nothing may touch.
class GuardedStack {
 public:
  using traits_type = boost::context::stack_traits;

  [[nodiscard]] static boost::context::stack_context allocate() {
    const std::size_t page = PageSize();
    void* const base = ::mmap(nullptr, Activities::StackSize + page, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (base == MAP_FAILED) throw std::bad_alloc();
    if (::mprotect(base, page, PROT_NONE) != 0) {
      ::munmap(base, Activities::StackSize + page);
      throw std::bad_alloc();
    }
    boost::context::stack_context stack;
    stack.size = Activities::StackSize;
    stack.sp = static_cast<char*>(base) + page + Activities::StackSize;
    return stack;
  }

  static void deallocate(boost::context::stack_context& stack) noexcept {
    char* const bottom = static_cast<char*>(stack.sp) - stack.size;
#ifdef TORVANE_ADDRESS_SANITIZER
    __asan_unpoison_memory_region(bottom, stack.size);
#endif
    ::munmap(bottom - PageSize(), stack.size + PageSize());
  }

 private:
  static std::size_t PageSize() {
    static const auto size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return size;
  }
};

}  // namespace

/// A stack that runs one handler after the other. `Self` is the stack while it rests, `Resumer` the
/// one that waits below while it runs; that is another one each time.
struct Activities::Activity {
  fiber Self;
  fiber Resumer;
  std::function<void()> Handler;
  const std::function<bool()>* Done = nullptr;
  std::exception_ptr Fault;
  ExceptionState Exceptions;
  StackMark Stack;
  StackMark Below;
  bool Ended = true;
  bool Unwinding = false;
  bool Dismissed = false;

  Activity() {
    const auto stack = GuardedStack::allocate();
    Stack.Bottom = static_cast<char*>(stack.sp) - stack.size;
    Stack.Size = stack.size;
    Self = fiber(std::allocator_arg, boost::context::preallocated(stack.sp, stack.size, stack),
                 GuardedStack(), [this](fiber&& resumer) { return Live(std::move(resumer)); });
  }
  ~Activity() {
    Dismissed = true;
    Enter();
  }
  Activity(const Activity&) = delete;
  Activity& operator=(const Activity&) = delete;

  /// From below onto this stack, until it leaves.
  void Enter() {
    ExceptionState& exceptions = ExceptionState::OfThread();
    const ExceptionState mine = std::exchange(exceptions, Exceptions);
    StackMark here;
    StackMark::Begin(&here, Stack);
    Self = std::move(Self).resume();
    StackMark left;
    StackMark::End(here.Kept, left);
    Exceptions = std::exchange(exceptions, mine);
  }

  /// From this stack to the one below, until somebody enters again.
  void Leave() {
    StackMark::Begin(&Stack, Below);
    Resumer = std::move(Resumer).resume();
    StackMark::End(Stack.Kept, Below);
  }

 private:
  fiber Live(fiber&& resumer) {
    StackMark::End(nullptr, Below);
    Resumer = std::move(resumer);
    while (!Dismissed) {
      RunHandler();
      Leave();
    }
    StackMark::Begin(nullptr, Below);
    return std::move(Resumer);
  }

  void RunHandler() {
    try {
      Handler();
    } catch (const GivenUp&) {
      // It was asked to end, and has.
    } catch (...) {
      if (!Unwinding) Fault = std::current_exception();
    }
    try {
      Handler = nullptr;  // what it held goes on this stack, too
    } catch (...) {
      if (!Unwinding && !Fault) Fault = std::current_exception();
    }
    Ended = true;
  }
};

Activities::Activities() = default;

Activities::~Activities() { Unwind(); }

std::unique_ptr<Activities::Activity> Activities::Take() {
  if (idle_.empty()) return std::make_unique<Activity>();
  auto taken = std::move(idle_.back());
  idle_.pop_back();
  return taken;
}

void Activities::Start(std::function<void()> handler) {
  auto taken = Take();
  Activity& activity = *taken;
  activity.Handler = std::move(handler);
  activity.Ended = false;
  activity.Unwinding = unwinding_;
  underWay_.push_back(std::move(taken));
  Run(activity);
}

void Activities::Run(Activity& activity) {
  Activity* const before = std::exchange(current_, &activity);
  activity.Enter();
  current_ = before;
  if (!activity.Ended) return;
  const std::exception_ptr fault = std::exchange(activity.Fault, nullptr);
  GiveBack(activity);
  if (fault) std::rethrow_exception(fault);
}

void Activities::GiveBack(Activity& activity) {
  const auto place = std::find_if(underWay_.begin(), underWay_.end(),
                                  [&](const auto& each) { return each.get() == &activity; });
  idle_.push_back(std::move(*place));
  underWay_.erase(place);
}

void Activities::Wait(const std::function<bool()>& done) {
  Activity& activity = *current_;
  if (!activity.Unwinding) {
    if (done()) return;
    activity.Done = &done;
    activity.Leave();
    activity.Done = nullptr;
    if (!activity.Unwinding) return;
  }
  // In a destructor on the way out there is no throwing; it does without its wait.
  if (std::uncaught_exceptions() == 0) throw GivenUp{};
}

Activities::Activity* Activities::FirstReady() const {
  for (const auto& each : underWay_) {
    if (each->Done != nullptr && (*each->Done)()) return each.get();
  }
  return nullptr;
}

bool Activities::Ready() const { return FirstReady() != nullptr; }

bool Activities::GoOn() {
  if (Inside()) return false;
  bool any = false;
  while (Activity* const next = FirstReady()) {
    any = true;
    Run(*next);
  }
  return any;
}

void Activities::Unwind() {
  const bool before = std::exchange(unwinding_, true);
  for (;;) {
    const auto last = std::find_if(underWay_.rbegin(), underWay_.rend(),
                                   [](const auto& each) { return each->Done != nullptr; });
    if (last == underWay_.rend()) break;
    Activity& activity = **last;
    activity.Unwinding = true;
    Run(activity);
  }
  unwinding_ = before;
}

}  // namespace torvane::platform
