#ifndef KALDEX_SHAPEFILE_VALUE_LOSSES_H
#define KALDEX_SHAPEFILE_VALUE_LOSSES_H

#include <QString>

namespace kaldex {

// What an attribute table could not take as it is: told in the job's report, the first ones one by one and
// the rest as a number. Without a current report nothing is kept.
class ValueLosses {
 public:
  // `owner` is the object or class that the value belongs to; `characters` those that Latin-1 doesn't have.
  void characters(const QString& owner, const QString& column, const QString& characters);
  void cutText(const QString& owner, const QString& column, int width);
  void badNumber(const QString& owner, const QString& column);
  // Tells how many there were beyond the listed ones; at the end of the export.
  void finish();

 private:
  static constexpr long long kListed = 100;

  void tell(const QString& text);

  long long told_ = 0;
};

}  // namespace kaldex

#endif
