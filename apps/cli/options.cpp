#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <QStringList>
#include <cstring>
#include <string>

#include "base/text_encoding.h"
#include "cli/language.h"
#include "cli/option_words.h"
#include "cli/registry.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

std::string words(const QString& text) {
  return text.toLocal8Bit().toStdString();
}

/// What the command line says, as it stands.
struct RawWords {
  std::string format, kind, file, output, dataBase, place;
  std::string key, types;
  std::string layers, move, rotate, scaleBy, prefix, suffix, valueKind, layerName;
  std::string model, category, crs, crsFrom, box, scale, units, coords, separator, encoding, by, size,
      language;
  std::vector<std::string> answers;
};

class CommandLine {
 public:
  explicit CommandLine(Options& options) : options_(options) { describe(); }

  std::optional<int> parse(int argc, char** argv);

 private:
  void describe();
  void describeCommon(CLI::App& command);
  void describeQuestions(CLI::App& command);
  void describeTarget(CLI::App& command);
  void describeSource(CLI::App& command);
  void describeDrawing(CLI::App& command);
  void describeLabels(CLI::App& command);
  void describeOutput(CLI::App& command);
  void describeInit();
  void describeImport();
  void describeExport();
  void describeConvert();
  void describeInfo();
  void describeDraw();
  void describeClassify();
  void describeTriangulate();
  CLI::App* addCommand(const char* name, Command command, const QString& description);
  /// `value` stands in the help for what follows the name.
  static void option(CLI::App& command, const char* name, const char* value, std::string& target,
                     const QString& description) {
    command.add_option(name, target, words(description))->type_name(value);
  }
  static void flag(CLI::App& command, const char* name, bool& target, const QString& description) {
    command.add_flag(name, target, words(description));
  }
  static void word(CLI::App& command, const char* name, std::string& target, const QString& description,
                   bool required = true) {
    command.add_option(name, target, words(description))
        ->required(required)
        ->type_name("")
        ->check([](const std::string& value) {
          return value.empty() ? words(Say::tr("não pode ser vazio")) : std::string();
        });
  }

  void take();
  void takeNames();
  void takeNumbers();
  void takeDrawing();
  void takeAnswers();
  void check() const;
  void checkFormat() const;
  bool isTable() const;

  Options& options_;
  RawWords raw_;
  CLI::App app_;
};

QString formatsOf(Command command) {
  QStringList names;
  for (const Format& format : formats()) {
    const bool offers = command == Command::import ? !format.imports.empty() || !format.tableImports.empty()
                                                   : !format.exports.empty() || !format.tableExports.empty();
    if (offers) names << QString::fromLatin1(format.name);
  }
  return Say::tr("Formato: %1").arg(names.join(QStringLiteral(", ")));
}

// --- What there is
// -------------------------------------------------------------------------------------------

void CommandLine::describe() {
  app_.name("kaldex");
  app_.description(words(Say::tr("Importa, exporta e mostra dados de bancos de dados geográficos.")));
  app_.option_defaults()->group(words(Say::tr("Opções")));
  app_.set_help_flag("-h,--help", words(Say::tr("Mostra esta ajuda e termina")));
  app_.set_version_flag("--version", "kaldex " KALDEX_VERSION, words(Say::tr("Mostra a versão e termina")));
  app_.get_formatter()->label("Usage", words(Say::tr("Uso")));
  app_.get_formatter()->label("Positionals", words(Say::tr("Argumentos")));
  app_.get_formatter()->label("OPTIONS", words(Say::tr("OPÇÕES")));
  app_.get_formatter()->label("SUBCOMMAND", words(Say::tr("COMANDO")));
  app_.get_formatter()->label("REQUIRED", "");
  app_.get_formatter()->label("Excludes", words(Say::tr("não com")));
  app_.get_formatter()->column_width(34);
  app_.require_subcommand(1);
  describeCommon(app_);
  describeInit();
  describeImport();
  describeExport();
  describeConvert();
  describeInfo();
  describeDraw();
  describeClassify();
  describeTriangulate();
  app_.footer(
      words(Say::tr("Exemplos:\n"
                    "  kaldex init base.gpkg\n"
                    "  kaldex import shapefile features rios.shp base.gpkg mapa/rios\n"
                    "  kaldex export ascii lines base.gpkg mapa/rios rios.kdx\n"
                    "  kaldex classify ascii solos.kdx base.gpkg mapa/solos\n"
                    "  kaldex info base.gpkg mapa/rios --json\n"
                    "  kaldex draw base.gpkg mapa mapa.png --size 1600x800\n"
                    "\n"
                    "Código de saída: 0 feito, 1 falhou, 2 uso errado, 3 recusado por uma pergunta, "
                    "130 cancelado.")));
}

CLI::App* CommandLine::addCommand(const char* name, Command command, const QString& description) {
  CLI::App* const added = app_.add_subcommand(name, words(description));
  added->group(words(Say::tr("Comandos")));
  added->callback([this, command] { options_.command = command; });
  describeCommon(*added);
  return added;
}

void CommandLine::describeCommon(CLI::App& command) {
  flag(command, "--json", options_.json, Say::tr("Um objeto JSON na saída padrão em vez de texto"));
  flag(command, "--quiet", options_.quiet, Say::tr("Sem relatório e sem barra de progresso"));
  option(command, "--lang", "LANG", raw_.language, Say::tr("Língua: pt, en ou es; sem ela, a do ambiente"));
}

void CommandLine::describeQuestions(CLI::App& command) {
  CLI::Option* const yes =
      command.add_flag("--yes", options_.yes, words(Say::tr("Responde sim a todas as perguntas")));
  command.add_flag("--no", options_.no, words(Say::tr("Responde não a todas as perguntas")))->excludes(yes);
  command
      .add_option(
          "--answer", raw_.answers,
          words(Say::tr("COMEÇO DA PERGUNTA=yes ou =no; vale mais que --yes e --no; pode repetir-se")))
      ->type_name("TEXT=yes|no")
      ->take_all()
      ->allow_extra_args(false);
}

void CommandLine::describeTarget(CLI::App& command) {
  option(
      command, "--model", "MODEL", raw_.model,
      Say::tr("Modelo do plano novo: thematic, numeric, network, cadastral, object; de tabelas: nonspatial"));
  option(command, "--category", "NAME", raw_.category,
         Say::tr("Categoria do plano novo; sem ela, o nome do plano"));
  option(
      command, "--crs", "CRS", raw_.crs,
      Say::tr("Projeção do projeto novo: EPSG:n, texto PROJ, WKT ou um arquivo .prj; sem ela, a do arquivo"));
  option(command, "--box", "X1,Y1,X2,Y2", raw_.box,
         Say::tr("Caixa do plano novo, X1,Y1,X2,Y2 em unidades do plano; sem ela, a do arquivo"));
  option(command, "--scale", "N", raw_.scale, Say::tr("Escala do plano novo: 25000 ou 1:25000"));
}

void CommandLine::describeSource(CLI::App& command) {
  option(command, "--crs-from", "CRS", raw_.crsFrom, Say::tr("Projeção do arquivo, em vez da que ele diz"));
  option(command, "--units", "UNIT", raw_.units,
         Say::tr("Unidade dos números do arquivo: m, km, ft, in, deg, sec, mm"));
  option(command, "--encoding", "NAME", raw_.encoding,
         Say::tr("Codificação dos textos, em vez da que o arquivo diz"));
  flag(command, "--strict", options_.strict, Say::tr("Lê o arquivo de texto como está, sem prepará-lo"));
}

void CommandLine::describeDrawing(CLI::App& command) {
  option(command, "--layers", "NAME,...", raw_.layers,
         Say::tr("Planos do desenho (dxf) que se leem; sem eles, todos"));
  option(command, "--move", "DX,DY", raw_.move,
         Say::tr("Desloca o desenho (dxf), depois de girar e escalar, em metros"));
  option(command, "--rotate", "DEGREES", raw_.rotate,
         Say::tr("Gira o desenho (dxf) em torno da origem, em graus, no sentido anti-horário"));
  option(command, "--scale-by", "K", raw_.scaleBy, Say::tr("Multiplica as coordenadas do desenho (dxf)"));
}

void CommandLine::describeLabels(CLI::App& command) {
  option(command, "--prefix", "TEXT", raw_.prefix, Say::tr("Só os textos do dxf que começam assim"));
  option(command, "--suffix", "TEXT", raw_.suffix, Say::tr("Só os textos do dxf que terminam assim"));
  option(command, "--value-kind", "KIND", raw_.valueKind,
         Say::tr("Só os textos do dxf formados de: letters, digits, both"));
}

void CommandLine::describeOutput(CLI::App& command) {
  option(command, "--by", "WHAT", raw_.by,
         Say::tr("Registros de um shapefile: class (por classe), object, height (cota como coluna), region"));
  option(command, "--layer-name", "NAME", raw_.layerName,
         Say::tr("Nome dos planos de um dxf escrito; sem ele, o do plano"));
  flag(command, "--used-classes", options_.usedClasses, Say::tr("Só o que é de classes em uso no plano"));
  flag(command, "--overwrite", options_.overwrite, Say::tr("Substitui um arquivo que já existe"));
}

void CommandLine::describeInit() {
  CLI::App* const command = addCommand("init", Command::init, Say::tr("Cria um banco de dados geográfico"));
  word(*command, "DB", raw_.dataBase, Say::tr("Arquivo do banco, que não deve existir"));
}

void CommandLine::describeImport() {
  CLI::App* const command =
      addCommand("import", Command::import, Say::tr("Importa um arquivo para um plano"));
  word(*command, "FORMAT", raw_.format, formatsOf(Command::import));
  word(*command, "KIND", raw_.kind,
       Say::tr("O que importar: features (o que houver), lines, points, polygons, contours, samples, labels, "
               "texts, turns; table; de um csv: table, append-columns, update, statistics, nonspatial"));
  word(*command, "FILE", raw_.file, Say::tr("Arquivo de origem"));
  word(*command, "DB", raw_.dataBase, Say::tr("Banco de dados"));
  word(*command, "PROJECT/LAYER", raw_.place,
       Say::tr("Projeto e plano, ou a categoria de uma tabela; criados quando não existem"));
  describeTarget(*command);
  describeSource(*command);
  describeDrawing(*command);
  describeLabels(*command);
  option(*command, "--coords", "FORM", raw_.coords, Say::tr("Forma das coordenadas: planar, gms, deg, sec"));
  option(*command, "--separator", "C", raw_.separator,
         Say::tr("Separador de campos: um caractere, tab, ou none (nenhum)"));
  option(*command, "--key", "COLUMN", raw_.key,
         Say::tr("Coluna (nome ou número) do csv que identifica os objetos; sem ela, o número do registro"));
  option(*command, "--types", "COLUMN=TYPE,...", raw_.types,
         Say::tr("Tipos de colunas do csv: integer, real, date, text ou text:TAMANHO; sem eles, text"));
  flag(*command, "--quoted", options_.quoted, Say::tr("Lê um csv com aspas: limpa-o antes numa cópia"));
  flag(*command, "--keep-table", options_.keepTable,
       Say::tr("Deixa ao lado do csv a tabela ASCII a que ele foi convertido"));
  flag(*command, "--dry-run", options_.dryRun, Say::tr("Lê e confere tudo, não guarda nada"));
  flag(*command, "--keep-partial", options_.keepPartial,
       Say::tr("Guarda o que uma importação interrompida deixou"));
  describeQuestions(*command);
  command->footer(words(
      Say::tr("Exemplos:\n"
              "  kaldex import shapefile features lotes.shp base.gpkg cidade/lotes --model cadastral --yes\n"
              "  kaldex import ascii lines rios.kdx base.gpkg mapa/rios --crs EPSG:31983 --dry-run\n"
              "  kaldex import shapefile contours curvas.shp base.gpkg relevo/curvas --scale 10000\n"
              "  kaldex import csv table censo.csv base.gpkg censo --key codigo --types renda=real")));
}

void CommandLine::describeExport() {
  CLI::App* const command =
      addCommand("export", Command::export_, Say::tr("Exporta um plano para um arquivo"));
  word(*command, "FORMAT", raw_.format, formatsOf(Command::export_));
  word(
      *command, "KIND", raw_.kind,
      Say::tr("O que exportar: lines, polygons, points, points-auto, contours, samples, labels, labels-auto, "
              "labels-unclassified, labels-more, labels-swapped, table, texts, tin, tin3d, turns; all (kml)"));
  word(*command, "DB", raw_.dataBase, Say::tr("Banco de dados"));
  word(*command, "PROJECT/LAYER", raw_.place, Say::tr("Projeto e plano, ou a categoria de uma tabela"));
  word(*command, "FILE", raw_.file, Say::tr("Arquivo de destino"));
  describeOutput(*command);
  flag(*command, "--append", options_.append,
       Say::tr("Acrescenta a um arquivo que já existe (ascii, linhas de dxf)"));
  option(*command, "--coords", "FORM", raw_.coords, Say::tr("Forma das coordenadas: planar, gms, deg, sec"));
  option(*command, "--separator", "C", raw_.separator,
         Say::tr("Separador de campos: um caractere, tab, ou none (nenhum)"));
  option(*command, "--category", "NAME", raw_.category, Say::tr("Categoria de objetos, com --by object"));
  option(*command, "--model", "MODEL", raw_.model,
         Say::tr("Modelo da categoria de uma tabela, se há duas do mesmo nome: object, nonspatial"));
  flag(*command, "--dry-run", options_.dryRun, Say::tr("Escreve e confere tudo, não deixa nada"));
  describeQuestions(*command);
  command->footer(
      words(Say::tr("Exemplos:\n"
                    "  kaldex export shapefile polygons base.gpkg cidade/lotes lotes.shp --by object\n"
                    "  kaldex export ascii lines base.gpkg mapa/rios rios.kdx --coords gms\n"
                    "  kaldex export ascii labels base.gpkg mapa/solos solos.kdx --separator \";\"\n"
                    "  kaldex export ascii table base.gpkg lotes lotes.kdx")));
}

void CommandLine::describeConvert() {
  CLI::App* const command = addCommand("convert", Command::convert,
                                       Say::tr("Converte um arquivo, por um banco de dados temporário"));
  word(*command, "IN", raw_.file, Say::tr("Arquivo de origem"));
  word(*command, "OUT", raw_.output,
       Say::tr("Arquivo de destino; seu nome diz o formato (.shp, .kdx, .txt, .dxf, .gen, .kml, .kmz, .gpkg)"));
  option(*command, "--kind", "KIND", raw_.kind,
         Say::tr("O que converter, se há mais de um tipo: lines, polygons, ..."));
  describeTarget(*command);
  describeSource(*command);
  describeDrawing(*command);
  describeOutput(*command);
  option(*command, "--coords", "FORM", raw_.coords,
         Say::tr("Forma das coordenadas escritas: planar, gms, deg, sec"));
  option(*command, "--separator", "C", raw_.separator,
         Say::tr("Separador de campos: um caractere, tab, ou none (nenhum)"));
  flag(*command, "--dry-run", options_.dryRun, Say::tr("Lê, escreve e confere tudo, não deixa nada"));
  describeQuestions(*command);
  command->footer(words(Say::tr("Exemplo:\n  kaldex convert rios.shp rios.kdx --crs EPSG:31983")));
}

void CommandLine::describeInfo() {
  CLI::App* const command = addCommand(
      "info", Command::info, Say::tr("Mostra o que há num banco de dados, num plano ou num arquivo"));
  word(*command, "DB|FILE", raw_.dataBase, Say::tr("Banco de dados ou arquivo"));
  word(*command, "PROJECT/LAYER", raw_.place, Say::tr("Projeto, ou projeto e plano"), false);
}

void CommandLine::describeDraw() {
  CLI::App* const command =
      addCommand("draw", Command::draw, Say::tr("Desenha um projeto ou plano como imagem PNG"));
  word(*command, "DB", raw_.dataBase, Say::tr("Banco de dados"));
  word(*command, "PROJECT/LAYER", raw_.place, Say::tr("Projeto, ou projeto e plano"));
  word(*command, "OUT.png", raw_.output, Say::tr("Imagem de destino"));
  option(*command, "--size", "WxH", raw_.size, Say::tr("LARGURAxALTURA em pontos; 1200x900 sem ela"));
  flag(*command, "--overwrite", options_.overwrite, Say::tr("Substitui um arquivo que já existe"));
}

void CommandLine::describeClassify() {
  CLI::App* const command =
      addCommand("classify", Command::classify,
                 Say::tr("Importa os identificadores de um arquivo e classifica por eles um plano"));
  word(*command, "FORMAT", raw_.format, Say::tr("Formato: %1").arg(QStringLiteral("ascii, dxf")));
  word(*command, "FILE", raw_.file, Say::tr("Arquivo de origem"));
  word(*command, "DB", raw_.dataBase, Say::tr("Banco de dados"));
  word(*command, "PROJECT/LAYER", raw_.place, Say::tr("Projeto e plano"));
  describeSource(*command);
  describeDrawing(*command);
  describeLabels(*command);
  option(*command, "--separator", "C", raw_.separator,
         Say::tr("Separador de campos: um caractere, tab, ou none (nenhum)"));
  flag(*command, "--dry-run", options_.dryRun, Say::tr("Lê e confere tudo, não guarda nada"));
  flag(*command, "--keep-partial", options_.keepPartial,
       Say::tr("Guarda o que uma importação interrompida deixou"));
  describeQuestions(*command);
  command->footer(words(Say::tr("Exemplo:\n  kaldex classify ascii classes.kdx base.gpkg mapa/solos --yes")));
}

void CommandLine::describeTriangulate() {
  CLI::App* const command = addCommand(
      "triangulate", Command::triangulate,
      Say::tr("Faz a triangulação das amostras e isolinhas de um plano, em lugar da que ele tiver"));
  word(*command, "DB", raw_.dataBase, Say::tr("Banco de dados"));
  word(*command, "PROJECT/LAYER", raw_.place, Say::tr("Projeto e plano"));
  flag(*command, "--dry-run", options_.dryRun, Say::tr("Faz tudo, não guarda nada"));
}

// --- What was said
// -------------------------------------------------------------------------------------------

std::optional<int> CommandLine::parse(int argc, char** argv) {
  try {
    app_.parse(argc, argv);
    take();
    check();
    return std::nullopt;
  } catch (const CLI::Success& success) {
    app_.exit(success);
    return kExitDone;
  } catch (const CLI::Error& error) {
    printLine(stderr, Say::tr("kaldex: uso errado: %1").arg(QString::fromLocal8Bit(error.what())));
    printLine(stderr, Say::tr("Veja: kaldex --help"));
    return kExitWrongUse;
  }
}

void CommandLine::take() {
  takeNames();
  takeNumbers();
  takeDrawing();
  takeAnswers();
}

void CommandLine::takeNames() {
  options_.format = fromWord(raw_.format);
  options_.kind = options_.command == Command::classify ? QStringLiteral("labels") : fromWord(raw_.kind);
  options_.file = fromWord(raw_.file);
  options_.output = fromWord(raw_.output);
  options_.dataBase = fromWord(raw_.dataBase);
  options_.place = fromWord(raw_.place);
  options_.category = fromWord(raw_.category);
  options_.crs = fromWord(raw_.crs);
  options_.crsFrom = fromWord(raw_.crsFrom);
  options_.separator = separatorOf(raw_.separator);
  options_.key = fromWord(raw_.key);
  if (!raw_.types.empty()) {
    for (const QString& one : fromWord(raw_.types).split(QLatin1Char(',')))
      options_.types.push_back(columnTypeOf(one));
  }
  options_.encoding = fromWord(raw_.encoding);
  options_.by = fromWord(raw_.by);
}

void CommandLine::takeNumbers() {
  if (!raw_.model.empty()) {
    choice(raw_.model, "--model", {"thematic", "numeric", "network", "cadastral", "object", "nonspatial"});
    options_.model = modelOfWord(fromWord(raw_.model));
  }
  if (!raw_.units.empty())
    options_.units = choice(raw_.units, "--units", {"m", "km", "ft", "in", "deg", "sec", "mm"});
  if (!raw_.coords.empty())
    options_.coords = choice(raw_.coords, "--coords", {"planar", "gms", "deg", "sec"});
  if (!raw_.box.empty()) options_.box = boxOf(raw_.box);
  if (!raw_.scale.empty()) {
    const QString text = fromWord(raw_.scale);
    options_.scale = number(text.startsWith(QLatin1String("1:")) ? text.mid(2) : text, "--scale");
    if (*options_.scale <= 0.0) throw WrongUse(Say::tr("--scale: espera-se um número acima de zero"));
  }
  if (!raw_.size.empty()) options_.size = sizeOf(raw_.size);
}

void CommandLine::takeDrawing() {
  if (!raw_.layers.empty()) options_.layers = fromWord(raw_.layers).split(QLatin1Char(','));
  if (!raw_.move.empty()) takeMove(raw_.move, options_.placement);
  if (!raw_.rotate.empty()) options_.placement.degrees = number(fromWord(raw_.rotate), "--rotate");
  if (!raw_.scaleBy.empty()) {
    options_.placement.scale = number(fromWord(raw_.scaleBy), "--scale-by");
    if (options_.placement.scale == 0.0)
      throw WrongUse(Say::tr("--scale-by: espera-se um número que não seja zero"));
  }
  options_.prefix = fromWord(raw_.prefix);
  options_.suffix = fromWord(raw_.suffix);
  options_.layerName = fromWord(raw_.layerName);
  if (!raw_.valueKind.empty())
    options_.valueKind =
        static_cast<short>(1 + choice(raw_.valueKind, "--value-kind", {"letters", "digits", "both"}));
}

void CommandLine::takeAnswers() {
  for (const std::string& answer : raw_.answers) options_.answers.push_back(answerOf(answer));
}

void CommandLine::check() const {
  if (!raw_.language.empty()) choice(raw_.language, "--lang", {"pt", "en", "es"});
  if (!raw_.by.empty()) choice(raw_.by, "--by", {"class", "object", "height", "region"});
  const QString& encoding = options_.encoding;
  const bool wide = encoding.startsWith(QLatin1String("UTF-16"), Qt::CaseInsensitive);
  if (!encoding.isEmpty() && !wide && encodingName(encoding.toLatin1()).isEmpty())
    throw WrongUse(Say::tr("--encoding: codificação desconhecida: %1").arg(encoding));
  const bool wantsFormat = options_.command == Command::import || options_.command == Command::export_ ||
                           options_.command == Command::classify;
  const bool wantsLayer = wantsFormat || options_.command == Command::triangulate;
  const int slash = options_.place.indexOf(QLatin1Char('/'));
  const bool hasLayer = slash > 0 && slash + 1 < options_.place.size();
  if (wantsLayer && !hasLayer && !isTable())
    throw WrongUse(Say::tr("espera-se PROJETO/PLANO em vez de %1").arg(options_.place));
  if (options_.append && options_.overwrite) throw WrongUse(Say::tr("--append e --overwrite não vão juntas"));
  if (wantsFormat) checkFormat();
}

template <class Kinds>
QStringList namesOf(const Kinds& kinds) {
  QStringList names;
  for (const auto& kind : kinds) names << QString::fromLatin1(kind.name);
  return names;
}

// Whether import or export are about a table, whose place is a category.
bool CommandLine::isTable() const {
  const Format* const format = findFormat(options_.format);
  if (format == nullptr) return false;
  return options_.command == Command::import ? format->tableImport(options_.kind) != nullptr
                                             : format->tableExport(options_.kind) != nullptr;
}

void CommandLine::checkFormat() const {
  const Format* const format = findFormat(options_.format);
  if (format == nullptr)
    throw WrongUse(Say::tr("formato %1 desconhecido; há: %2")
                       .arg(options_.format, namesOf(formats()).join(QStringLiteral(", "))));
  const bool import = options_.command != Command::export_;
  const bool known =
      import ? format->importKind(options_.kind) != nullptr : format->exportKind(options_.kind) != nullptr;
  if (!known && !isTable()) {
    QStringList names = import ? namesOf(format->imports) : namesOf(format->exports);
    names += import ? namesOf(format->tableImports) : namesOf(format->tableExports);
    throw WrongUse(Say::tr("%1 não oferece %2; há: %3")
                       .arg(options_.format, options_.kind, names.join(QStringLiteral(", "))));
  }
  if (options_.model == NOTSPACIALMODEL && !isTable())
    throw WrongUse(Say::tr("--model nonspatial é de tabelas, não de planos"));
  const ExportKind* const kind = import ? nullptr : format->exportKind(options_.kind);
  if (options_.append && (!format->appends || (kind != nullptr && !kind->appends)))
    throw WrongUse(
        Say::tr("%1 não acrescenta a um arquivo existente")
            .arg(format->appends ? options_.format + QLatin1Char(' ') + options_.kind : options_.format));
  if (!options_.by.isEmpty() && !format->by.contains(options_.by))
    throw WrongUse(Say::tr("%1 não conhece --by %2").arg(options_.format, options_.by));
}

}  // namespace

std::optional<int> readOptions(int argc, char** argv, Options& options) {
  return CommandLine(options).parse(argc, argv);
}

QString languageOption(int argc, char** argv) {
  QString language;
  for (int i = 1; i < argc; ++i) {
    const char* const word = argv[i];
    if (std::strcmp(word, "--lang") == 0 && i + 1 < argc) language = QString::fromLatin1(argv[i + 1]);
    if (std::strncmp(word, "--lang=", 7) == 0) language = QString::fromLatin1(word + 7);
  }
  return Language::isKnown(language) ? language : QString();
}

bool isSubcommand(int argc, char** argv, const char* name) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--lang") == 0) {
      ++i;
    } else if (argv[i][0] != '-') {
      return std::strcmp(argv[i], name) == 0;
    }
  }
  return false;
}

}  // namespace kaldex::cli
