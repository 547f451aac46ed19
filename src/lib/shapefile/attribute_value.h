#ifndef KALDEX_SHAPEFILE_ATTRIBUTE_VALUE_H
#define KALDEX_SHAPEFILE_ATTRIBUTE_VALUE_H

#include <QString>

#include "kaldex/model/field.h"

namespace kaldex {

enum class ValueFit {
  whole,
  cut,    // too long for its column: shortened
  wrong,  // no value of the column's type
};

// Bring a value of a .dbf into the form that a cell of that column takes. An empty value is a null of any
// type.
ValueFit fitValue(const SField& column, QString& value);

}  // namespace kaldex

#endif
