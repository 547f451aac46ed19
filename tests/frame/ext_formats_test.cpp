#include <sys/stat.h>

#include <new>

#include "frame/open_handler.h"
#include "kaldex/job_report.h"
#include "kaldex/model/exception.h"

namespace kaldex::test {

namespace {

TEST_F(FrameFixture, InitRefusesEmptyNames) {
  OpenHandler handler;
  EXPECT_EQ(handler.Init("", 3, "name", nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : pDataHome");
  EXPECT_EQ(handler.dataFile, "");
  EXPECT_EQ(handler.Init("/tmp", 3, "", nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Memória insuficiente: Falha na alocação de memória!");
  EXPECT_EQ(handler.dataHome, "/tmp");
}

TEST_F(FrameFixture, InitKeepsBoxAndDropsSeparatorWhenNull) {
  OpenHandler handler;
  const Box box(1, 2, 3, 4);
  handler.Init("/tmp", 0, "a", nullptr, nullptr, nullptr, nullptr, 0, ";", &box, nullptr);
  EXPECT_STREQ(handler.separator, ";");
  handler.Init("/tmp", 0, "a", nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr);
  EXPECT_STREQ(handler.separator, "");
  EXPECT_EQ(handler.box, box);
  handler.SetSeparator("too long");
  EXPECT_STREQ(handler.separator, "too ");
  handler.SetSeparator(nullptr);
  EXPECT_STREQ(handler.separator, "too ");
}

TEST_F(FrameFixture, UnitFactors) {
  const double factors[] = {
      1.0, 1.0, 1000.0, 0.30479999999999996, 0.0254, 0.017453292519943295, 4.84813681109536e-06, 0.001, 1.0};
  OpenHandler handler;
  for (int i = 0; i < 9; ++i) {
    handler.units = i - 1;
    EXPECT_EQ(handler.Units2Meter(), factors[i]) << handler.units;
  }
}

TEST_F(FrameFixture, OpeningRefusesWithItsMessages) {
  OpenHandler handler;
  EXPECT_EQ(handler.FileOpen("r"), 0);
  EXPECT_EQ(messages.take(), "Defina o diretório!");
  handler.DataHome(folder());
  EXPECT_EQ(handler.FileOpen("r"), 0);
  EXPECT_EQ(messages.take(), "Defina o nome do arquivo!");
  handler.DataFile("absent");
  EXPECT_EQ(handler.FileOpen(""), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!expmsg fileopen");
  EXPECT_EQ(handler.FileOpen("r"), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  handler.DataHome("/");
  handler.DataFile("tmp");
  EXPECT_EQ(handler.FileOpen("r"), 0) << "a directory";
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  EXPECT_EQ(handler.FileClose(), 1);
}

TEST_F(FrameFixture, OnlyACarriageReturnInTheFirstLineIsRefused) {
  const std::pair<QByteArray, int> cases[] = {{"a\r\nb\n", 0},  {"a\rb\nc\n", 0}, {"\r\n", 0},
                                              {"a\nb\r\n", 1},  {"\na\r\n", 1},   {"a\rb", 1},
                                              {QByteArray(), 1}};
  for (const auto& [content, opens] : cases) {
    auto handler = handlerFor(content);
    for (const char* mode : {"r", "a+"}) {
      EXPECT_EQ(handler->FileOpen(mode), opens) << content.toStdString();
      EXPECT_EQ(messages.take(), opens ? "" : "Arquivo no formato DOS, converter para UNIX!");
      EXPECT_NE(handler->file, nullptr);
      handler->FileClose();
      EXPECT_EQ(handler->file, nullptr);
    }
  }
}

TEST_F(FrameFixture, PathsAreLatin1FirstThenLocal) {
  const QByteArray latin1 = QFile::encodeName(folder()) + "/\xE7.txt";
  const QString local = path("ç.txt");
  OpenHandler handler;
  init(handler, "ç.txt");

  ASSERT_TRUE(handler.openFile("a+"));  // a new file gets the name as typed
  std::fputs("local", handler.file);
  handler.FileClose();
  EXPECT_TRUE(QFile::exists(local));
  struct stat status;
  EXPECT_NE(stat(latin1.constData(), &status), 0);

  FILE* const old = std::fopen(latin1.constData(), "w");
  std::fputs("latin", old);
  std::fclose(old);
  ASSERT_TRUE(handler.openFile("r"));
  EXPECT_TRUE(handler.readWordIntoLine());
  EXPECT_STREQ(handler.line, "latin");
  handler.FileClose();
  EXPECT_EQ(std::remove(latin1.constData()), 0);  // the folder's own cleaning doesn't see such names
}

TEST_F(FrameFixture, LayerListsAreCopied) {
  OpenHandler handler;
  SDataLayerList list;
  list.Append(new SDataLayer("A"));
  list.at(0)->flag1 = 7;
  handler.SetLayerList(&list);
  handler.GetLayerList(&list);
  ASSERT_EQ(list.Size(), 2);
  EXPECT_EQ(list.at(1)->Label(), "A");
  EXPECT_EQ(list.at(1)->flag1, 0);
  SDataLayerList empty;
  handler.SetLayerList(&empty);
  EXPECT_EQ(handler.layerList.Size(), 0);
  EXPECT_EQ(SDataLayer().Label(), "NOLABEL");
}

TEST_F(FrameFixture, LabelListCountsDifferentNodes) {
  SExtLabelPointList list;
  EXPECT_EQ(list.InsertLabel(nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : lp");
  const auto insert = [&](short nodes) {
    auto* const labelPoint = new SExtLabelPoint;
    labelPoint->Nodes = nodes;
    labelPoint->Coordinate(new Point(1, 2));
    EXPECT_EQ(list.InsertLabel(labelPoint), 1);
    return list.Count();
  };
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(insert(0), 1);
  EXPECT_EQ(insert(0), 1);
  EXPECT_EQ(insert(-3), 2);
  list.Kill();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(insert(-3), 1);
}

TEST_F(FrameFixture, NoExceptionLeavesAnOperation) {
  auto handler = handlerFor("text\n");
  const auto failWith = [&](auto exception) {
    const int result = handler->guarded([&]() -> int {
      EXPECT_TRUE(handler->openFile("r"));
      // Nested operations leave it to the outermost.
      return handler->guarded([&]() -> int { throw exception; });
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(handler->file, nullptr);
    return messages.take();
  };
  EXPECT_EQ(failWith(SException("disco cheio")), "Banco de Dados com problemas!\n(disco cheio)");
  EXPECT_EQ(failWith(std::bad_alloc()), "Memória insuficiente: Falha na alocação de memória!");
  EXPECT_EQ(failWith(std::runtime_error("x")), "Banco de Dados com problemas!\n(x)");
  EXPECT_EQ(failWith(SException("", SException::Kind::cancelled)), "");
}

TEST_F(FrameFixture, PlaceOfAnInconsistency) {
  const struct {
    QByteArray content;
    int words;  // read first
    int lines;  // read then
    long long line;
    long long column;
  } cases[] = {{"one\n  two three\nfour\n", 2, 0, 2, 3},
               {"one\n  two three\nfour\n", 3, 0, 2, 7},
               {"one\n  two three\nfour\n", 0, 2, 2, 3},
               {"one\n\n// c\n x\n", 0, 2, 4, 2},
               {"one", 0, 1, 1, 1},
               {"a\nb\n", 0, 3, 2, 1}};
  for (const auto& one : cases) {
    auto handler = handlerFor(one.content);
    JobReport report;
    const JobReportScope scope(report);
    ASSERT_TRUE(handler->openFile("r"));
    for (int i = 0; i < one.words; ++i) {
      EXPECT_TRUE(handler->readWordIntoLine());
      EXPECT_EQ(handler->inconsistent("a place before"), 0);
    }
    for (int i = 0; i < one.lines; ++i) {
      handler->clearLine();
      handler->LerLinha();
    }
    EXPECT_EQ(handler->inconsistent("x"), 0);
    handler->FileClose();
    EXPECT_EQ(report.place.file, path("file.txt"));
    EXPECT_EQ(report.place.line, one.line) << one.content.toStdString();
    EXPECT_EQ(report.place.column, one.column) << one.content.toStdString();
  }
}

TEST_F(FrameFixture, AnOperationClosesWhatItOpened) {
  auto handler = handlerFor("text\n");
  ASSERT_TRUE(handler->openFile("r"));
  EXPECT_EQ(handler->guarded([&] { return handler->readWordIntoLine() ? 1 : 0; }), 1);
  EXPECT_NE(handler->file, nullptr);  // the caller's
  EXPECT_EQ(handler->guarded([&] { return handler->openFile("r") ? 0 : 1; }), 0);
  EXPECT_EQ(handler->file, nullptr);
}

using GuardedImport = ModelFixture;

TEST_F(GuardedImport, KeepsWhatStandsAndWhatWasBefore) {
  const auto countAfterReopening = [&] {
    dataBase.reset();
    dataBase = DataBase::Open(path("base.gpkg"));
    project = dataBase->findProject("Projeto");
    return dataBase->findLayer(*project, "Plano")->vector(vectorLines, true)->lineCount();
  };
  OpenHandler handler;
  const auto import = [&](bool fails) {
    Vector* const vector = dataBase->findLayer(*project, "Plano")->vector(vectorLines, true);
    return handler.guardedImport(vector, [&]() -> int {
      delete insertLine(*vector, {1, 1, 2, 2});
      if (fails) throw SException("falha");
      return 1;
    });
  };
  layer(THEMATICMODEL, "Plano");  // not committed by the caller
  EXPECT_EQ(import(false), 1);
  EXPECT_EQ(countAfterReopening(), 1);
  EXPECT_EQ(import(true), 0);
  EXPECT_EQ(messages.take(), "Banco de Dados com problemas!\n(falha)");
  EXPECT_EQ(countAfterReopening(), 2);
  {
    const DBTransactionBlock block(dataBase.get());  // the caller decides
    EXPECT_EQ(import(false), 1);
  }
  EXPECT_EQ(countAfterReopening(), 2);
}

}  // namespace

}  // namespace kaldex::test
