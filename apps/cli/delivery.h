#ifndef KALDEX_CLI_DELIVERY_H
#define KALDEX_CLI_DELIVERY_H

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace kaldex::cli {

/// The way of an export's files to their final names: they are made in a folder of their own beside these,
/// and moved when all is well. What had the names before stays until then, and comes back when the move
/// fails.
class Delivery {
 public:
  /// `companions` are the endings of the files of one export, or of an older one, the first being that of
  /// `target` (which may lack it); empty for a single file.
  Delivery(const QString& target, const QStringList& companions);

  /// Why nothing may ever be written there: a folder has the name, or one of `sources`, the files that the
  /// work reads; empty when it may.
  QString objection(const QStringList& sources) const;
  /// Whether a file is there already.
  bool exists() const;
  /// Make the folder; with `append` the existing file is copied into it first. Files that the export makes
  /// beside its main one are known only when they are there: with `append` they are added to existing ones,
  /// without `replace` these are in the way. False: `trouble` says why.
  bool begin(bool append, bool replace, QString& trouble);
  /// The file to write, under its own name.
  QString workPath() const;
  /// Why writing failed, when the disk is full; empty when it is not.
  QString shortage() const;
  /// Move what was written to its place.
  bool finish(QString& trouble);
  /// The files that were moved there.
  const QStringList& files() const { return files_; }

 private:
  QStringList names(const QString& base) const;
  bool joinSideFiles(QString& trouble) const;
  QString finalPath(const QString& name) const;
  bool setAside(QString& trouble);
  bool moveIn(QString& trouble);
  void putBack();
  bool copyToDevice(QString& trouble) const;

  QString given_;  ///< the target as it was named
  QString folder_;
  QString base_;    ///< the file's name, without its ending where there are companions
  QString ending_;  ///< as it is to be written
  QStringList companions_;
  bool append_ = false;
  bool replace_ = false;
  bool device_ = false;  ///< the target is no file: what was written is copied into it
  std::unique_ptr<QTemporaryDir> work_;
  QStringList aside_;
  QStringList files_;
};

}  // namespace kaldex::cli

#endif
