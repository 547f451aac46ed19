#ifndef KALDEX_ASCII_LABEL_IMPORT_H
#define KALDEX_ASCII_LABEL_IMPORT_H

#include <QHash>
#include <memory>

#include "kaldex/model/database.h"
#include "lib/ascii/label_text.h"
#include "lib/ascii/section_reader.h"

inline namespace kaldex_v1 {

/// Reads the first section of label points into the handler's list. What a keyword says holds until another
/// says something else, but for the name of an object.
class IEAsc::LabelImport : private IEAsc::SectionReader {
 public:
  LabelImport(IEAsc& handler, InfoLayer& layer, SProjection* target);
  ~LabelImport();

  int run();

 private:
  enum class Step { goOn, end, failed };

  int finish(DBTransactionBlock& block);
  Step readRecord();
  bool readHeader();
  bool readWord(kaldex::RememberedText& remembered);
  bool useNodes();

  bool readPoint(bool angles);
  bool mayBeOldForm();
  bool readPlane(Point& place);
  bool readAngles(Point& place);
  bool splitLine();
  bool isSeparated() const { return handler_.separator[0] != 0; }
  /// Only then do the fields behind the coordinates count.
  bool hasFields() const { return isSeparated() && handler_.separator[1] == 0; }
  bool takePoint(const Point& place);

  bool takeObject();
  bool takeClassName();
  bool findClass();
  bool missClass();
  bool addClass();
  void knowClasses();
  void tell() const;

  InfoLayer& layer_;
  Category& category_;
  std::unique_ptr<SExtLabelPoint> next_;
  kaldex::RememberedText label_;
  kaldex::RememberedText name_;
  kaldex::RememberedText categoryName_;
  short nodes_ = 0;
  int lastClass_ = 0;
  int missing_ = 0;
  bool addAll_ = false;
  bool askedOldForm_ = false;
  bool classesKnown_ = false;
  QHash<QString, int> classes_;
  long long read_ = 0;
  char fields_[6][kFieldCapacity];
};

}  // namespace kaldex_v1

#endif
