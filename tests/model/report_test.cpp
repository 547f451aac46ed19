#include "kaldex/model/report.h"

#include <limits>
#include <memory>

#include "kaldex/model/field.h"
#include "support/model_fixture.h"

namespace {

using kaldex::test::ProgressRecorder;
using kaldex::test::RecordingPresenter;

TEST(SMessageBoxTest, GoesToThePresenterInPlace) {
  RecordingPresenter outer;
  {
    RecordingPresenter inner;
    inner.answer("Continua", false);
    EXPECT_EQ(SMessageBox::Show(1, nullptr, "KALDEX", "Continua ?"), kAnswerNo);
    EXPECT_TRUE(outer.shown.empty());
  }
  SMessageBox::Show(0, nullptr, "KALDEX", "Erro");
  ASSERT_EQ(outer.shown.size(), 1u);
  EXPECT_EQ(outer.shown[0].title, QString("KALDEX"));
  EXPECT_EQ(outer.shown[0].text, QString("Erro"));
}

TEST(SMessageBoxTest, AProgramWithoutABoxAnswersNo) {
  MessagePresenter* previous = SMessageBox::install(nullptr);
  testing::internal::CaptureStderr();
  EXPECT_EQ(SMessageBox::Show(1, nullptr, "KALDEX", "Continua ?"), kAnswerNo);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "KALDEX: Continua ?\n");
  SMessageBox::install(previous);
}

TEST(SErrorTest, SignalsAreFewAndTheLastOneIsTheMaximum) {
  ProgressRecorder recorder;
  SGError->ProgressInit(0, 1000000, 1);
  for (int i = 0; i < 1000000; ++i) SGError->ProgressStep();
  EXPECT_LE(recorder.values.size(), 1002u);
  EXPECT_GE(recorder.values.size(), 900u);
  EXPECT_EQ(recorder.values.back(), 1000000);
  // More steps than announced neither signal nor count on.
  const std::size_t signalled = recorder.values.size();
  for (int i = 0; i < 10; ++i) SGError->ProgressStep();
  EXPECT_EQ(recorder.values.size(), signalled);
  EXPECT_EQ(SGError->value(), 1000000);
  SGError->ProgressStop(true);
  EXPECT_EQ(recorder.stops, std::vector<bool>{true});
}

TEST(SErrorTest, OddRanges) {
  ProgressRecorder recorder;
  SGError->ProgressInit(0, 0, 1);
  SGError->ProgressStep();
  EXPECT_EQ(SGError->value(), 0);
  SGError->ProgressInit(10, -10, 1);
  EXPECT_EQ(recorder.maxima.back(), 10);
  SGError->ProgressInit(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 7);
  SGError->ProgressStep();
  EXPECT_EQ(SGError->value(), std::numeric_limits<int>::min() + 7);
  SGError->ProgressInit(0, 5, 10);
  SGError->ProgressStep();
  EXPECT_EQ(recorder.values.back(), 5);
  SGError->ProgressStop(true);
}

TEST(SErrorTest, CancelHoldsUntilTheNextOperation) {
  SGError->ProgressInit(0, 10, 1);
  SGError->Cancel();
  SGError->ProgressSetRange(0, 20, 1);
  EXPECT_TRUE(SGError->cancelled());
  SGError->ProgressInit(0, 10, 1);
  EXPECT_FALSE(SGError->cancelled());
  SGError->ProgressStop(true);
}

TEST(SFieldListTest, CopiesOfAnOwningListAreDeep) {
  auto original = std::make_unique<SFieldList>();
  original->Append(new SField("Nome", fieldText, 10, 0, 1, "CG000001"));
  original->at(0)->cells.Append(new SCell("CG000001", fieldText, "a"));
  const SFieldList copy(*original);
  original.reset();
  ASSERT_EQ(copy.Size(), 1);
  EXPECT_EQ(copy.find("NOME"), copy.at(0));
  EXPECT_EQ(copy.find("NOM"), nullptr);
  EXPECT_EQ(copy.at(0)->cells.Size(), 0);

  SFieldList borrowing(List::Ownership::borrows);
  borrowing.Append(copy.at(0));
  EXPECT_EQ(SFieldList(borrowing).at(0), copy.at(0));
}

}  // namespace
