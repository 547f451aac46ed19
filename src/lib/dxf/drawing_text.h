#ifndef KALDEX_DXF_DRAWING_TEXT_H
#define KALDEX_DXF_DRAWING_TEXT_H

#include <QByteArray>
#include <QString>
#include <memory>
#include <string_view>

#include "base/text_encoding.h"

namespace kaldex {

// Turns the bytes of a drawing's names and texts into what they mean: the drawing's code page or UTF-8, and
// the codes for characters that texts may hold.
class DrawingText {
 public:
  // `override` is the encoding that the user names, else the header's code page ("ANSI_1252") counts, else
  // Latin-1; both may be empty. Bytes that are UTF-8 throughout are that, unless the user says otherwise:
  // newer drawings are, and headers are often wrong.
  DrawingText(const QByteArray& override, const QByteArray& codePage);

  // A name of a layer, with \U+XXXX and its kind.
  QString name(std::string_view bytes);
  // The text of an entity: %%d and its kind too.
  QString text(std::string_view bytes);

  // The header's code page when it isn't known here and texts would have needed it, else empty.
  QString unknownPage() const { return sawOther_ ? unknownPage_ : QString(); }
  // How many texts so far held bytes that mean nothing in the encoding.
  int undecodable() const { return decoder_->undecodable(); }

  // The encoding of what was decoded so far, and why it is taken (a key of base/text_encoding.h, or
  // "header").
  QString encoding() const { return sawUtf8_ ? QStringLiteral("UTF-8") : encoding_; }
  QString reason() const { return sawUtf8_ ? QString::fromLatin1(kEncodingFromBytes) : reason_; }

 private:
  QString decoded(std::string_view bytes);

  std::unique_ptr<TextDecoder> decoder_;
  QString encoding_;
  QString reason_;
  bool fixed_ = false;
  QString unknownPage_;
  bool sawUtf8_ = false;
  bool sawOther_ = false;  // neither ASCII nor UTF-8
};

// Replaces \U+XXXX (a character), \M+NXXXX (one of five code pages of two bytes a character). What is no such
// code stays as it is.
QString withEscapes(const QString& text);
// Replaces %%d (degrees), %%p (plus or minus), %%c (diameter), %%% (percent), %%NNN (a character by number)
// and drops what only switches a line over or under the text (%%o, %%u, %%k).
QString withControls(const QString& text);
// A text as a drawing without a code page holds it: Latin-1, with \U+XXXX for what that lacks and without
// line ends.
QByteArray drawingBytes(const QString& text);

}  // namespace kaldex

#endif
