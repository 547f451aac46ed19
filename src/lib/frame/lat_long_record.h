#ifndef KALDEX_FRAME_LAT_LONG_RECORD_H
#define KALDEX_FRAME_LAT_LONG_RECORD_H

namespace kaldex {

enum class LatLongResult { found, end, malformed };

struct LatLongRecord {
  double longitude = 0.0;  // radians, as the next
  double latitude = 0.0;
  float height = 0.0f;  // above 3.4e35 when the record has none
};

// Reads "s 23 10 5.20 o 45 30 10.50 z 612.5": latitude and longitude in either order, each led by its
// hemisphere letter, and an optional height. "END" at the beginning ends a list of them. Tabs in the text
// become blanks.
LatLongResult parseLatLong(char* text, LatLongRecord& record);

}  // namespace kaldex

#endif
