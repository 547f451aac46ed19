#include "cli/map_frame.h"

#include <algorithm>
#include <cmath>

#include "cli/texts.h"

namespace kaldex::cli {

namespace {

const QColor kInk(0x33, 0x38, 0x3E);
const QColor kPaper(0xFF, 0xFF, 0xFF);
const QColor kGround(0xF3, 0xF7, 0xFA);
constexpr double kBarShare = 0.22;  // of the map's width, at most
constexpr int kBarParts = 4;

double textHeight(const QSize& size) {
  return std::clamp(std::min(size.width(), size.height()) / 55.0, 8.0, 60.0);
}

// The largest of 1, 2 and 5 times a power of ten that isn't above.
double roundBelow(double value) {
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double step : {5.0, 2.0}) {
    if (step * power <= value) return step * power;
  }
  return power;
}

QString lengthText(double metres, bool units) {
  if (units) return numberText(metres);
  return metres >= 1000.0 ? QStringLiteral("%1 km").arg(numberText(metres / 1000.0))
                          : QStringLiteral("%1 m").arg(numberText(metres));
}

}  // namespace

MapFrame::MapFrame(const QSize& size) : size_(size), margin_(2.0 * textHeight(size)) {
  const double bottom = 2.6 * textHeight(size);
  inside_ = QRectF(margin_, margin_, size.width() - 2 * margin_, size.height() - margin_ - bottom);
}

void MapFrame::drawSheet(QPainter& painter) const {
  painter.fillRect(QRectF(QPointF(0, 0), QSizeF(size_)), kPaper);
  painter.fillRect(inside_, kGround);
}

void MapFrame::drawFrame(QPainter& painter, const QString& title, const QString& remark) const {
  QFont font = painter.font();
  font.setPixelSize(static_cast<int>(textHeight(size_)));
  painter.setFont(font);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kInk, 1.2));
  painter.drawRect(inside_);
  const QRectF top(inside_.left(), 0, inside_.width(), inside_.top());
  painter.drawText(top, Qt::AlignVCenter | Qt::AlignLeft, title);
  painter.drawText(top, Qt::AlignVCenter | Qt::AlignRight, remark);
}

void MapFrame::drawScaleBar(QPainter& painter, const MapView& view, bool units) const {
  const double widest = view.metresPerPoint() * inside_.width() * kBarShare;
  if (!(widest > 0.0) || !std::isfinite(widest)) return;
  const double length = roundBelow(widest);
  const double width = length / view.metresPerPoint();
  const double height = textHeight(size_) * 0.45;
  const double y = inside_.bottom() + textHeight(size_) * 0.9;
  painter.setPen(QPen(kInk, 1.0));
  for (int part = 0; part < kBarParts; ++part) {
    const QRectF box(inside_.left() + width * part / kBarParts, y, width / kBarParts, height);
    painter.setBrush(part % 2 == 0 ? QBrush(kInk) : QBrush(kPaper));
    painter.drawRect(box);
  }
  painter.setBrush(Qt::NoBrush);
  const QRectF label(inside_.left() + width + textHeight(size_), y - height, inside_.width(), 3 * height);
  painter.drawText(label, Qt::AlignVCenter | Qt::AlignLeft, lengthText(length, units));
}

}  // namespace kaldex::cli
