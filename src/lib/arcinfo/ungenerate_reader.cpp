#include "lib/arcinfo/ungenerate_reader.h"

#include <QObject>

#include "base/character_class.h"
#include "base/text_input.h"
#include "kaldex/job_report.h"
#include "lib/frame/file_place.h"

inline namespace kaldex_v1 {

bool IEArcInfo::Reader::nextLine() {
  handler_.clearLine();
  return handler_.readLine() != 0 ? step() : endOfFile();
}

bool IEArcInfo::Reader::step() {
  progress_.step();
  return !progress_.cancelled();
}

bool IEArcInfo::Reader::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

bool IEArcInfo::Reader::endOfFile() {
  handler_.inconsistent("END ???");
  return false;
}

// Some programs close each of several parts of a file; nobody should lose the later ones without a word.
int IEArcInfo::Reader::finish() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return 1;
  int c = ' ';
  while (kaldex::isBlankCharacter(c)) c = kaldex::readCharacter(handler_.file);
  if (c == EOF) return 1;
  const kaldex::RecordPlace place = kaldex::placeOfRecord(handler_.openedPath(), ftello(handler_.file));
  job->note(QObject::tr("O texto depois do END final, a partir da linha %1, não foi lido").arg(place.line));
  return 1;
}

}  // namespace kaldex_v1
