#include "lib/legacy/line_files.h"

#include "base/byte_order.h"

namespace kaldex {

namespace {

constexpr std::size_t kHeaderSize = 50;
constexpr std::size_t kRecordSize = 100;
constexpr std::size_t kCoordinateWindow = 8192;  // lines are read in no order
constexpr std::uint16_t kEndForRead = 65534;
constexpr std::uint16_t kEndForHead = 65535;

// Where fields stand in a record.
enum Place {
  placeId = 0,
  placePoints = 2,
  placeFirstX = 26,
  placeFirstY = 30,
  placeLastX = 34,
  placeLastY = 38,
  placeOffset = 96
};

LineRecord parse(const unsigned char* bytes) {
  LineRecord record;
  record.id = loadLittle<std::uint16_t>(bytes + placeId);
  record.points = loadLittle<std::uint16_t>(bytes + placePoints);
  record.firstX = loadLittle<float>(bytes + placeFirstX);
  record.firstY = loadLittle<float>(bytes + placeFirstY);
  record.lastX = loadLittle<float>(bytes + placeLastX);
  record.lastY = loadLittle<float>(bytes + placeLastY);
  record.offset = loadLittle<std::uint32_t>(bytes + placeOffset);
  return record;
}

int find(LineFiles& files, LineRecord& record, int id, std::uint16_t endMark) {
  if (id < 1 || id >= files.limit || files.coordinates == nullptr) return 0;
  const int start = files.hasDirect && id > files.highestDirect ? files.highestDirect : id;
  const unsigned char* const bytes = files.records.find(start - 1, id, endMark);
  if (bytes == nullptr) return 0;
  record = parse(bytes);
  return 1;
}

bool readFloats(FileWindow& file, std::uint64_t offset, std::size_t count, std::vector<float>& values) {
  values.resize(count);
  if (file.read(offset, values.data(), count * sizeof(float)) != count * sizeof(float)) return false;
  for (float& value : values) value = loadLittle<float>(&value);
  return true;
}

}  // namespace

int linha_abre_arq(LineFiles& files, const char* name) {
  const QByteArray base(name);
  linha_fecha_arq(files);
  FileWindow records(base + ".li1");
  auto coordinates = std::make_unique<FileWindow>(base + ".li2", kCoordinateWindow);
  if (!records.isOpen() || !coordinates->isOpen()) return openMissing;
  const unsigned char* const header = records.view(0, kHeaderSize);
  if (header == nullptr) return openShort;
  files.highestDirect = loadLittle<std::int16_t>(header);
  files.limit = loadLittle<std::int16_t>(header + 2);
  files.hasDirect = header[4] == '1';
  files.records = RecordTable(records, {kHeaderSize, kRecordSize, placeId}, files.limit);
  files.coordinates = std::move(coordinates);
  return openDone;
}

void linha_fecha_arq(LineFiles& files) {
  files = LineFiles();
}

int linha_le_head(LineFiles& files, LineRecord& record, int id) {
  return find(files, record, id, kEndForHead);
}

int linha_le(LineFiles& files, LineRecord& record, int id, std::vector<float>& x, std::vector<float>& y) {
  if (find(files, record, id, kEndForRead) == 0) return 0;
  const std::size_t count = record.points;
  const std::uint64_t size = count * sizeof(float);
  if (record.offset + 2 * size > files.coordinates->size()) return 0;
  const bool read = readFloats(*files.coordinates, record.offset, count, x) &&
                    readFloats(*files.coordinates, record.offset + size, count, y);
  return read ? 1 : 0;
}

int aloca_pt(LineFiles& files, LineRecord& record, const std::int16_t* ids, int count, long long& total) {
  total = 0;
  for (int i = 0; i < count; ++i) {
    if (linha_le_head(files, record, ids[i]) == 0) return 0;
    total += record.points;
  }
  return 1;
}

}  // namespace kaldex
