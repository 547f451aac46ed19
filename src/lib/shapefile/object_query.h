#ifndef KALDEX_SHAPEFILE_OBJECT_QUERY_H
#define KALDEX_SHAPEFILE_OBJECT_QUERY_H

#include <QString>
#include <memory>

#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"

namespace kaldex {

// The query for the objects of a category that a layer shows, with their attributes: a row for each object
// and anchor, in order of anchors.
struct ObjectQuery {
  QString tables;
  QString selection;
  QString condition;
  QString join;
  QString order;
  int firstAttribute = 0;  // the row's first column that is an attribute of the object
};

ObjectQuery objectQuery(DataBase& dataBase, const Category& category, const InfoLayer& layer);

// Leaves a record set alone that the database shares, and deletes any other.
struct RecordSetReturn {
  void operator()(RecordSet* records) const {
    if (!records->shared()) delete records;
  }
};
using RecordSetLease = std::unique_ptr<RecordSet, RecordSetReturn>;

// Throws SException.
RecordSetLease openRecords(DataBase& dataBase, const ObjectQuery& query);

}  // namespace kaldex

#endif
