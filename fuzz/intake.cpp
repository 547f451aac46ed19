// What is done with a text before a handler sees it, and what a dialog shows of it. The first byte chooses
// form and encoding; what follows is the file.

#include "kaldex/intake.h"

#include <QFile>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "kaldex/model/projection.h"

namespace {

constexpr char kFile[] = "in.txt";

// A mended text needs no mending, unless its zeros make it look like UTF-16 or like no text at all.
void isMended(const QString& path, TextForm form) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.readAll().contains('\0')) return;
  const TextIntake again(path, form, false, QStringLiteral("ISO-8859-1"));
  if (again.isReady() && again.isCopy()) kaldex::fuzz::finding("a mended text is mended once more");
}

void outline(const QString& path) {
  static const std::unique_ptr<SProjection> target(GetNewInstance(ProjectionType::latLong));
  const AsciiOutline sections(path);
  int units = 0;
  for (const AsciiSection& section : sections.sections()) {
    const AsciiHeader header = sections.header(section);
    sections.extent(section, header.projection.get(), target.get(), units++ % 7);
    if (units == 8) break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr const char* kEncodings[] = {"",       "",          "UTF-8",   "UTF-16", "windows-1252",
                                               "IBM850", "Shift-JIS", "nonsense"};
  static const kaldex::fuzz::Scratch scratch;
  kaldex::fuzz::Input input(data, size);
  const unsigned choice = input.byte();
  const TextForm form = (choice & 1) != 0 ? TextForm::delimitedTable : TextForm::sections;
  scratch.write(kFile, kaldex::fuzz::expandRuns(input.rest()));
  const QString path = scratch.path(kFile);
  guessFile(path);
  const TextIntake intake(path, form, false, QString::fromLatin1(kEncodings[(choice >> 1) & 7]));
  if (!intake.isReady()) return 0;
  isMended(intake.path(), form);
  outline(intake.path());
  return 0;
}
