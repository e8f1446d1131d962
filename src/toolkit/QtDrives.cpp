#include "toolkit/QtDrives.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <cctype>

namespace torvane::toolkit {

namespace {

/// Where desktops and administrators mount what is plugged in.
const QStringList& MountRoots() {
  static const QStringList roots = {QStringLiteral("/media/"), QStringLiteral("/run/media/")};
  return roots;
}

constexpr char FirstLetter = 'E';

char LetterOf(std::string_view drive) {
  return drive.empty() ? '\0'
                       : static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0])));
}

bool Removable(const QStorageInfo& volume) {
  if (!volume.isValid() || !volume.isReady() || volume.isRoot()) return false;
  for (const QString& root : MountRoots()) {
    if (volume.rootPath().startsWith(root)) return true;
  }
  return false;
}

}  // namespace

QtDrives::QtDrives(const std::map<char, std::string>& given) {
  for (const auto& [letter, path] : given) given_[LetterOf({&letter, 1})] = path;
}

void QtDrives::Look() const {
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (!Removable(volume)) continue;
    const std::string path = volume.rootPath().toLocal8Bit().toStdString();
    bool known = false;
    for (const auto& [letter, place] : found_) known = known || place == path;
    for (char letter = FirstLetter; !known && letter <= 'Z'; ++letter) {
      if (given_.count(letter) || found_.count(letter)) continue;
      found_[letter] = path;
      known = true;
    }
  }
}

std::string QtDrives::PathOf(std::string_view drive) const {
  const char letter = LetterOf(drive);
  if (const auto given = given_.find(letter); given != given_.end()) return given->second;
  Look();
  const auto found = found_.find(letter);
  return found == found_.end() ? std::string() : found->second;
}

bool QtDrives::Ready(std::string_view drive) const {
  const std::string path = PathOf(drive);
  if (path.empty()) return false;
  const QString name = QString::fromLocal8Bit(path.c_str());
  if (!QFileInfo(name).isDir() || !QFileInfo(name).isReadable()) return false;
  if (given_.count(LetterOf(drive))) return true;
  // A volume that was taken out leaves its mount point behind.
  const QStorageInfo volume(name);
  return volume.isReady() && QDir(volume.rootPath()) == QDir(name);
}

std::vector<std::string> QtDrives::List() const {
  Look();
  std::map<char, std::string> all = given_;
  for (const auto& [letter, path] : found_) {
    const QStorageInfo volume(QString::fromLocal8Bit(path.c_str()));
    if (QDir(volume.rootPath()) == QDir(QString::fromLocal8Bit(path.c_str()))) all[letter] = path;
  }
  std::vector<std::string> names;
  names.reserve(all.size());
  for (const auto& [letter, path] : all) names.push_back(std::string(1, letter) + ":");
  return names;
}

}  // namespace torvane::toolkit
