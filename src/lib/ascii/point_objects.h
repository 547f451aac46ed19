#ifndef KALDEX_ASCII_POINT_OBJECTS_H
#define KALDEX_ASCII_POINT_OBJECTS_H

#include <QString>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>

#include "kaldex/ascii.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"
#include "lib/frame/anchor_shelf.h"

inline namespace kaldex_v1 {

/// Makes points the places of objects: finds or makes the category, the object and its anchor. To be used
/// within one transaction, all of which is to be dropped when an operation returns false; the user has been
/// told then.
class IEAsc::PointObjects {
 public:
  struct Counts {
    long long associated = 0;
    long long notAssociated = 0;
    long long already = 0;
    long long objects = 0;  ///< that were made
  };

  PointObjects(IEAsc& handler, Vector& vector);
  ~PointObjects();

  /// Learn which anchors the layer has.
  bool open();
  /// Names in Latin-1. A point without identifier is not stored, and becomes no place.
  bool take(const Point2d& point, const std::string& label, const std::string& name,
            const std::string& category);
  /// Store what is still held.
  void close();
  Counts& counts() { return counts_; }

 private:
  bool selectCategory(const std::string& name);
  bool selectObject(const std::string& label, const std::string& name);
  bool makeAnchor(const Point2d& point);
  bool fetchAnchor(int id);
  void addToAnchor(const Point2d& point);
  void storeAnchor(const Anchor& anchor);
  bool loadVisual(int id, GeneralVisual& visual) const;

  IEAsc& handler_;
  Vector& vector_;
  DataBase& base_;
  InfoLayer& layer_;
  std::unordered_map<int, int> anchors_;  ///< anchor by object
  std::unordered_map<int, int> visuals_;  ///< visual by anchor
  std::set<std::string> refused_;         ///< categories that the user doesn't want made
  // What the last record was about: the next one is often about the same.
  std::string categoryName_;
  Category* category_ = nullptr;
  std::string label_;
  KaldexObject object_;
  kaldex::AnchorShelf::Held* anchor_ = nullptr;  ///< of the object, on the shelf
  kaldex::AnchorShelf shelf_;
  Counts counts_;
};

}  // namespace kaldex_v1

#endif
