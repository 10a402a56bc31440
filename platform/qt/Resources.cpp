#include <QFile>
#include <QPixmap>
#include <map>

#include "platform/qt/NativeCursor.h"
#include "platform/qt/NativeToolkit.h"

namespace platform {

namespace {

QImage Load(const char* kind, int id) {
  QImage image(QString(":/vornalite/%1-%2.png").arg(kind).arg(id));
  if (image.isNull()) ThrowNil("there is no resource of that number");
  return image;
}

/// The hot spot of a cursor, from a table of rows "id x y".
QPoint HotSpot(int id) {
  QFile table(":/vornalite/hotspots.txt");
  if (!table.open(QIODevice::ReadOnly)) return {};
  while (!table.atEnd()) {
    const auto row = table.readLine().simplified().split(' ');
    if (row.size() == 3 && row[0].toInt() == id) return {row[1].toInt(), row[2].toInt()};
  }
  return {};
}

}  // namespace

Ref<Picture> ResourceFork::GetPicture(int id) const {
  static std::map<int, Ref<Picture>> pictures;
  auto& picture = pictures[id];
  if (!picture) picture = ToPicture(Load("picture", id));
  return picture;
}

const MouseCursor& ResourceFork::getCursor(int id) const {
  static std::map<int, MouseCursor> cursors;
  auto found = cursors.find(id);
  if (found == cursors.end()) {
    const QPoint spot = HotSpot(id);
    const QCursor cursor(QPixmap::fromImage(Load("cursor", id)), spot.x(), spot.y());
    found = cursors.emplace(id, MouseCursor(std::make_shared<MouseCursor::Native>(MouseCursor::Native{cursor}))).first;
  }
  return found->second;
}

}  // namespace platform
