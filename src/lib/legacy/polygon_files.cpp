#include "lib/legacy/polygon_files.h"

#include "base/byte_order.h"
#include "lib/legacy/line_files.h"

namespace kaldex {

namespace {

constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kRecordSize = 116;
constexpr std::uint16_t kEnd = 65534;

// Where fields stand in a record.
enum Place {
  placeChildrenOffset = 38,
  placeLines = 46,
  placeXMin = 48,
  placeXMax = 52,
  placeYMin = 56,
  placeYMax = 60,
  placeClass = 64,
  placeId = 66,
  placeLinesOffset = 68,
  placeFlag = 72,
  placeChildren = 74,
  placeOwnChildren = 76
};

PolygonRecord parse(const unsigned char* bytes) {
  PolygonRecord record;
  record.childrenOffset = loadLittle<float>(bytes + placeChildrenOffset);
  record.lines = loadLittle<std::uint16_t>(bytes + placeLines);
  record.xMin = loadLittle<float>(bytes + placeXMin);
  record.xMax = loadLittle<float>(bytes + placeXMax);
  record.yMin = loadLittle<float>(bytes + placeYMin);
  record.yMax = loadLittle<float>(bytes + placeYMax);
  record.geoClass = loadLittle<std::int16_t>(bytes + placeClass);
  record.id = loadLittle<std::uint16_t>(bytes + placeId);
  record.linesOffset = loadLittle<std::uint32_t>(bytes + placeLinesOffset);
  record.flag = static_cast<char>(bytes[placeFlag]);
  record.children = loadLittle<std::int16_t>(bytes + placeChildren);
  for (std::size_t i = 0; i < record.own.size(); ++i) {
    record.own[i] = loadLittle<std::int16_t>(bytes + placeOwnChildren + 2 * i);
  }
  return record;
}

bool readList(FileWindow& file, std::uint64_t offset, std::size_t count, std::vector<std::int16_t>& list) {
  const std::size_t size = count * sizeof(std::int16_t);
  if (offset > file.size() || size > file.size() - offset) return false;
  list.resize(count);
  if (file.read(offset, list.data(), size) != size) return false;
  for (std::int16_t& value : list) value = loadLittle<std::int16_t>(&value);
  return true;
}

}  // namespace

int poli_abre_arq(PolygonFiles& files, const char* name) {
  const QByteArray base(name);
  poli_fecha_arq(files);
  FileWindow records(base + ".po1");
  auto lists = std::make_unique<FileWindow>(base + ".po2");
  if (!records.isOpen() || !lists->isOpen()) return openMissing;
  const unsigned char* const header = records.view(0, kHeaderSize);
  if (header == nullptr) return openShort;
  files.count = loadLittle<std::int16_t>(header);
  files.limit = loadLittle<std::int16_t>(header + 6);
  files.records = RecordTable(records, {kHeaderSize, kRecordSize, placeId}, files.limit);
  files.lists = std::move(lists);
  return openDone;
}

void poli_fecha_arq(PolygonFiles& files) {
  files = PolygonFiles();
}

int poli_le(PolygonFiles& files, PolygonRecord& record, int id, std::vector<std::int16_t>& lines) {
  if (id < 1 || id >= files.limit || files.lists == nullptr) return 0;
  const unsigned char* const bytes = files.records.find(id - 1, id, kEnd);
  if (bytes == nullptr) return 0;
  record = parse(bytes);
  return readList(*files.lists, record.linesOffset, record.lines, lines) ? 1 : 0;
}

int poli_le_filhos(PolygonFiles& files, const PolygonRecord& record, std::vector<std::int16_t>& children) {
  children.clear();
  if (record.children <= 0) return 1;
  const auto count = static_cast<std::size_t>(record.children);
  if (count <= PolygonRecord::kOwnChildren) {
    children.assign(record.own.begin(), record.own.begin() + record.children);
    return 1;
  }
  // Compared as a real number: not every one has an integer.
  const float offset = record.childrenOffset;
  if (!(offset >= 0.0f && offset <= static_cast<float>(files.lists->size()))) return 0;
  return readList(*files.lists, static_cast<std::uint64_t>(offset), count, children) ? 1 : 0;
}

}  // namespace kaldex
