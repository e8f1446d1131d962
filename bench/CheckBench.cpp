// The whole process of torvane-check against a floor: a process that reads the same program, parses
// its numbers and writes the same bytes into as many files, each replaced whole. All files are in
// memory-backed storage. Prints the fastest of many runs of each, taken in turn, so that a busy
// machine slows all of them alike.
//
//     build/release/bench/CheckBench [RUNS]
//
// Figures that count, on a quiet machine: "check" of 24,000 lines at most 36 ms and 24 MiB, with
// a picture at most 58 ms and 40 MiB; the growth of "check" from 6,000 to 24,000 lines over that of
// the floor at most 1.05.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/General.h"
#include "platform/DiskFileSystem.h"

namespace {

using namespace torvane;
namespace fs = std::filesystem;

/// Every number of a text, by the cheapest plain scan.
double SumOfNumbers(std::string_view text) {
  double sum = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if ((c < '0' || c > '9') && c != '-') {
      ++at;
      continue;
    }
    const std::size_t end = std::min(text.find_first_not_of("0123456789.", at + 1), text.size());
    sum += core::LeadingNumber(text.substr(at, end - at));
    at = end;
  }
  return sum;
}

/// The floor: `program` is read, and files of these sizes are left in `out`.
int RunFloor(const std::string& program, const std::string& out, char** sizes) {
  platform::DiskFileSystem files("/");
  const double sum = SumOfNumbers(files.ReadFile(platform::DiskFileSystem::ToSystemPath(program)));
  std::string buffer;
  for (int number = 1; *sizes != nullptr; ++sizes, ++number) {
    buffer.assign(std::strtoul(*sizes, nullptr, 10), static_cast<char>(sum));
    files.ReplaceFile(
        platform::DiskFileSystem::ToSystemPath(out + "/floor" + std::to_string(number)), buffer);
  }
  return 0;
}

/// An installation in memory with two generated programs, gone at the end.
class Shop {
 public:
  Shop() : path_("/dev/shm/torvane-check-bench-" + std::to_string(::getpid())) {
    fs::create_directories(path_);
    fs::copy(fs::path(TORVANE_SOURCE_DIR) / "examples" / "installation", path_ + "/root",
             fs::copy_options::recursive);
    fs::create_directories(path_ + "/root/Programs/BENCH");
    fs::create_directories(path_ + "/floor");
  }
  ~Shop() {
    std::error_code error;
    fs::remove_all(path_, error);
  }
  Shop(const Shop&) = delete;
  Shop& operator=(const Shop&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] std::string Program(const std::string& name) const {
    return path_ + "/root/Programs/BENCH/" + name + ".prg";
  }

 private:
  std::string path_;
};

/// The fastest run of a command, and the most memory that any took.
struct Row {
  std::string Name;
  std::vector<std::string> Arguments;
  double Wall = 1e9;  ///< ms
  double User = 0;
  double System = 0;
  double Peak = 0;  ///< MiB
};

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

void RunOnce(Row& row) {
  std::vector<char*> argv;
  argv.reserve(row.Arguments.size() + 1);
  for (auto& argument : row.Arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  int status = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
  rusage usage{};
  if (status == 0) ::wait4(child, &status, 0, &usage);
  const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) {
    std::fprintf(stderr, "%s: failed\n", row.Name.c_str());
    std::exit(1);
  }
  row.Peak = std::max(row.Peak, static_cast<double>(usage.ru_maxrss) / 1024);
  if (wall.count() >= row.Wall) return;
  row.Wall = wall.count();
  row.User = Milliseconds(usage.ru_utime);
  row.System = Milliseconds(usage.ru_stime);
}

Row CheckRow(const Shop& shop, const std::string& program, const std::string& plot) {
  Row row{plot.empty() ? "check " + program : "check " + program + " --plot", {}};
  row.Arguments = {TORVANE_CHECK, "--root", shop.Path() + "/root", "--out",
                   shop.Path() + "/" + program};
  if (!plot.empty()) row.Arguments.insert(row.Arguments.end(), {"--plot", shop.Path() + plot});
  row.Arguments.insert(row.Arguments.end(), {"BENCH", program});
  return row;
}

/// Writes the files that a check of the program leaves.
Row FloorRow(const Shop& shop, const std::string& program) {
  Row row{"floor " + program,
          {"/proc/self/exe", "--floor", shop.Program(program), shop.Path() + "/floor"}};
  for (const auto& entry : fs::recursive_directory_iterator(shop.Path() + "/" + program)) {
    if (entry.is_regular_file()) row.Arguments.push_back(std::to_string(entry.file_size()));
  }
  return row;
}

void Print(const std::vector<Row>& rows) {
  std::printf("%-20s %9s %9s %9s %10s\n", "", "ms", "user", "system", "peak MiB");
  for (const auto& row : rows) {
    std::printf("%-20s %9.1f %9.1f %9.1f %10.1f\n", row.Name.c_str(), row.Wall, row.User,
                row.System, row.Peak);
  }
  const double check = rows[1].Wall / rows[0].Wall;
  const double floor = rows[4].Wall / rows[3].Wall;
  std::printf("24,000 lines over the floor: %.2f\n", rows[1].Wall / rows[4].Wall);
  std::printf("growth from 6,000 lines: %.2f, of the floor %.2f, ratio %.2f\n", check, floor,
              check / floor);
}

void Generate(const Shop& shop, const std::string& program, const char* profiles) {
  Row row{"generate", {TORVANE_GENERATE, "--profiles", profiles, shop.Program(program)}};
  RunOnce(row);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 4 && std::strcmp(argv[1], "--floor") == 0) return RunFloor(argv[2], argv[3], argv + 4);
  const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 50;
  const Shop shop;
  Generate(shop, "L6000", "750");
  Generate(shop, "L24000", "3000");
  std::vector<Row> rows = {CheckRow(shop, "L6000", ""), CheckRow(shop, "L24000", ""),
                           CheckRow(shop, "L24000", "/plot.png")};
  for (auto& row : rows) RunOnce(row);
  rows.push_back(FloorRow(shop, "L6000"));
  rows.push_back(FloorRow(shop, "L24000"));
  for (int run = 0; run < runs; ++run) {
    for (auto& row : rows) RunOnce(row);
  }
  Print(rows);
  return 0;
}
