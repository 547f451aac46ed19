#ifndef KALDEX_INTAKE_TEXT_MENDER_H
#define KALDEX_INTAKE_TEXT_MENDER_H

#include <QByteArray>
#include <QString>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "base/latin1.h"
#include "kaldex/intake.h"

class QTextDecoder;

namespace kaldex {

// Writes lines that end in a line feed, whatever they ended in, and ends the text as its form wants it.
class LineMender {
 public:
  LineMender(FILE* out, TextForm form);

  void add(std::string_view bytes);
  // The end of the text; false when anything did not reach the stream.
  bool finish();

  long long dosEnds() const { return dosEnds_; }
  long long macEnds() const { return macEnds_; }
  // Whether finish() changed the end of the text.
  bool endMended() const { return endMended_; }
  bool controlZDropped() const { return controlZDropped_; }

 private:
  void put(std::string_view bytes);
  void write(std::string_view bytes);
  void hold(char special);
  void lineFeed();

  FILE* out_;
  TextForm form_;
  bool ok_ = true;
  bool returnPending_ = false;  // a carriage return that may belong to a line feed
  bool anything_ = false;
  bool lastIsFeed_ = false;
  std::string tail_;  // line feeds, end marks and blanks behind these, which go if nothing else follows
  long long dosEnds_ = 0;
  long long macEnds_ = 0;
  bool endMended_ = false;
  bool controlZDropped_ = false;
};

// Turns the bytes of an encoding into Latin-1, piece by piece.
class Latin1Converter {
 public:
  // Names as QTextCodec knows them.
  explicit Latin1Converter(const QByteArray& codecName);
  ~Latin1Converter();

  bool isValid() const { return decoder_ != nullptr; }
  QByteArray convert(std::string_view bytes);
  // What convert() held back.
  QByteArray finish();
  const Latin1Loss& loss() const { return loss_; }

 private:
  std::unique_ptr<QTextDecoder> decoder_;
  QString held_;  // the last letter, which an accent may follow
  Latin1Loss loss_;
};

}  // namespace kaldex

#endif
