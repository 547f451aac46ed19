#ifndef KALDEX_CLI_OPTIONS_H
#define KALDEX_CLI_OPTIONS_H

#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "kaldex/model/geometry.h"

namespace kaldex::cli {

enum class Command { none, init, import, export_, convert, info, draw, classify, triangulate };

/// An answer given beforehand to the questions that begin so.
struct Answer {
  QString beginning;
  bool yes;
};

/// The type that a column of a delimited table is to have.
struct ColumnType {
  QString name;
  short type;  ///< a FieldType
  short size;  ///< of a text; 0: as its longest value needs
};

/// What is done to the coordinates of a drawing: turned, then scaled, then moved.
struct Placement {
  double moveX = 0.0;  ///< metres, as the next
  double moveY = 0.0;
  double degrees = 0.0;  ///< counter-clockwise
  double scale = 1.0;

  bool isIdentity() const { return moveX == 0.0 && moveY == 0.0 && degrees == 0.0 && scale == 1.0; }
};

/// All that the command line says.
struct Options {
  Command command = Command::none;
  QString format;
  QString kind;
  QString file;      ///< the outside file: source or target; of convert the source
  QString output;    ///< convert's target, draw's picture
  QString dataBase;  ///< of info: database or file
  QString place;     ///< PROJECT/LAYER, PROJECT, or the category of a table

  short model = 0;  ///< a category model; 0: by the file
  QString category;
  QString crs;
  QString crsFrom;
  std::optional<Box> box;
  std::optional<double> scale;
  std::optional<int> units;   ///< as for SExtFormats::Units2Meter
  std::optional<int> coords;  ///< 0 planar, 1 degrees, minutes and seconds, 2 degrees, 3 seconds
  QString separator;          ///< null: not told; empty: none
  QString encoding;
  QString by;   ///< class, object, height, region; empty: class
  QString key;  ///< the column of a delimited table that identifies rows
  std::vector<ColumnType> types;
  QSize size{1200, 900};
  QStringList layers;  ///< of a drawing, those to import; empty: all
  Placement placement;
  QString prefix;       ///< labels of a drawing begin so
  QString suffix;       ///< they end so
  short valueKind = 0;  ///< they consist of letters (1), digits (2), letters and digits (3)
  QString layerName;    ///< of a drawing that is written; empty: the layer's own

  bool quoted = false;     ///< clean a delimited table of quotes and the like
  bool keepTable = false;  ///< keep the section that a delimited table was converted to
  bool usedClasses = false;
  bool dryRun = false;
  bool strict = false;
  bool keepPartial = false;
  bool append = false;
  bool overwrite = false;

  bool json = false;
  bool quiet = false;
  bool yes = false;
  bool no = false;
  std::vector<Answer> answers;
};

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr int kExitWrongUse = 2;
constexpr int kExitRefused = 3;
constexpr int kExitCancelled = 130;

/// Reads the command line. Without a value the command is to be run; with one the process ends with it, help
/// or a complaint being printed.
std::optional<int> readOptions(int argc, char** argv, Options& options);

/// The language that "--lang" names, looked up before anything else is read; empty without it.
QString languageOption(int argc, char** argv);

/// Whether the first word that is no option is this one.
bool isSubcommand(int argc, char** argv, const char* name);

}  // namespace kaldex::cli

#endif
