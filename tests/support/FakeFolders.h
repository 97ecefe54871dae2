#pragma once

#include "platform/Folders.h"

#include <QObject>
#include <QStringList>

#include <map>

namespace talnik::test {

/// Folders in memory. A path that was not added is missing; one in Refuses may not be read.
class FakeFolders : public Folders {
 public:
  QList<Place> Places() const override { return Drives; }
  void Read(const QString& path, std::function<void(const Answer&)> done) override;

  /// A file, or a folder when the path ends in "/", with the folders that it lies in.
  void Add(const QString& path);
  /// A link to a folder.
  void AddLink(const QString& path);
  void Remove(const QString& path);
  /// Answers what was held back.
  void Reply(Outcome outcome);

  QList<Place> Drives{{Place::Kind::Home, u"/home/eva"_qs}, {Place::Kind::Root, u"/"_qs}};
  QStringList Refuses;
  QStringList Invented;  ///< folders that the system makes up
  QStringList WasRead;   ///< every path that was asked for
  bool Hold = false;     ///< nothing is answered by itself

 private:
  Folders::Answer AnswerFor(const QString& path) const;

  std::map<QString, QList<Entry>> folders_{{u"/"_qs, {}}};
  std::function<void(const Folders::Answer&)> done_;
  QObject alive_;
};

}  // namespace talnik::test
