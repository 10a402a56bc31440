#include "tests/support/VisibleState.h"

#include <cxxabi.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QBackingStore>
#include <QComboBox>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QMetaEnum>
#include <QPainter>
#include <QProgressBar>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionButton>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "platform/qt/NativeCaption.h"
#include "platform/qt/NativeCursor.h"
#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeLook.h"
#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Inputs.h"
#include "platform/widgets/Listbox.h"
#include "tests/support/Testing.h"

namespace platform::testing {

namespace {

template <class Object>
std::string ClassOf(const Object& object) {
  int status = 0;
  char* whole = abi::__cxa_demangle(typeid(object).name(), nullptr, nullptr, &status);
  const std::string name = whole;
  std::free(whole);
  return name.substr(name.rfind(':') + 1);
}

std::string Quoted(const QString& text) { return '"' + QString(text).replace('\n', " / ").toStdString() + '"'; }
std::string Hex(unsigned value, int digits) { return QString("%1").arg(value, digits, 16, QChar('0')).toStdString(); }
std::string ColorOf(QRgb pixel) {
  return QString("%1").arg(pixel & 0xFFFFFFU, 6, 16, QChar('0')).toUpper().toStdString();
}
std::string Place(const QRect& rect) {
  return QString("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()).toStdString();
}

std::string Digest(const QImage& image) {
  unsigned hash = 2166136261U;  // FNV-1a over red, green, blue and, where there is one, alpha
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      for (QRgb rest = image.pixel(x, y), i = 0; i < 4; ++i, rest >>= 8) hash = (hash ^ (rest & 0xFFU)) * 16777619U;
  return Hex(hash, 8);
}

/// The members of the set as ranges: "1-3,7".
std::string Ranges(const std::set<int>& members) {
  std::string ranges;
  for (auto first = members.begin(); first != members.end();) {
    auto last = first;
    while (std::next(last) != members.end() && *std::next(last) == *last + 1) ++last;
    ranges += (ranges.empty() ? "" : ",") + std::to_string(*first);
    if (*last != *first) ranges += "-" + std::to_string(*last);
    first = std::next(last);
  }
  return ranges;
}

/// Which columns and rows each colour except the background covers; the digest of a picture of many colours.
std::string Shapes(const QImage& image, QRgb ground) {
  struct Cover {
    std::set<int> columns, rows;
    int pixels = 0;
  };
  std::map<QRgb, Cover> covers;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (pixel == ground) continue;
      Cover& cover = covers[pixel];
      ++cover.pixels;
      if (covers.size() > 16) continue;
      cover.columns.insert(x);
      cover.rows.insert(y);
    }
  if (covers.size() > 16) return std::to_string(covers.size()) + " colours " + Digest(image);
  std::string shapes;
  for (const auto& [pixel, cover] : covers)
    shapes += (shapes.empty() ? "" : "; ") + ColorOf(pixel) + " x" + Ranges(cover.columns) + " y" + Ranges(cover.rows) +
              " " + std::to_string(cover.pixels) + "px";
  return shapes;
}

std::string TextOf(const QImage& picture) {
  const QRgb first = picture.pixel(0, 0);
  const std::string shapes = Shapes(picture, first);
  return std::to_string(picture.width()) + "x" + std::to_string(picture.height()) + " " + ColorOf(first) +
         (shapes.empty() ? " throughout" : ", " + shapes);
}

/// Whether all of a control's caption is visible in its place with its font.
bool CaptionFits(RectControl& control) {
  const auto* native = dynamic_cast<NativeCaption*>(&control.NeedNative());
  if (!native || native->caption.isEmpty()) return true;
  const QFontMetrics metrics(native->widget->font());
  int lines = 1;
  if (const auto* label = qobject_cast<QLabel*>(native->widget)) lines += static_cast<int>(label->text().count('\n'));
  return metrics.horizontalAdvance(native->caption) <= native->place.width - native->besides &&
         metrics.height() * lines <= native->place.height + 2;
}

/// The image of the window that was last sent to the screen, in device pixels.
QImage ScreenOf(const QWidget& frame) {
  QPaintDevice* device = frame.backingStore() ? frame.backingStore()->paintDevice() : nullptr;
  if (!device || device->devType() != QInternal::Image) return {};
  QImage image = static_cast<QImage*>(device)->convertToFormat(QImage::Format_RGB32);
  image.setDevicePixelRatio(1);
  return image;
}

QRect InFrame(const QWidget& widget, double ratio) {
  const QPoint corner = widget.mapTo(widget.window(), QPoint());
  return QRectF(corner.x() * ratio, corner.y() * ratio, widget.width() * ratio, widget.height() * ratio)
      .toAlignedRect();
}

/// How many pixels differ between two pictures of the same size, and the rectangle that holds them.
std::pair<int, QRect> Differing(const QImage& a, const QImage& b) {
  std::pair<int, QRect> differing;
  for (int y = 0; y < a.height(); ++y) {
    const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
    const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
    for (int x = 0; x < a.width(); ++x)
      if ((rowA[x] ^ rowB[x]) << 8) ++differing.first, differing.second |= QRect(x, y, 1, 1);
  }
  return differing;
}

/// Where the screen does not show what the window would paint now, in device pixels; everything if a pixel of it is not
/// opaque.
QRect StaleIn(QWidget& frame) {
  if (!frame.isVisible()) return {};
  const QImage screen = ScreenOf(frame);
  QImage fresh = frame.grab().toImage().convertToFormat(QImage::Format_RGB32);
  fresh.setDevicePixelRatio(1);
  const auto* seen = reinterpret_cast<const QRgb*>(screen.constBits());
  const bool opaque =
      std::all_of(seen, seen + screen.width() * screen.height(), [](QRgb p) { return p >> 24 == 0xFF; });
  return opaque && fresh.size() == screen.size() ? Differing(fresh, screen).second : fresh.rect();
}

// Text that is drawn on the cells of lists.

struct DrawnText {
  std::string text;
  Color color;
  int x, y;
};
std::vector<DrawnText> drawnTexts;

/// Records each text instead of drawing it. All characters have the same width, whatever the fonts.
void RecordTexts() {
  drawnTexts.clear();
  SetTextDrawing({.draw =
                      [](const Graphics& surface, const Rect&, const String& text, int x, int y) {
                        drawnTexts.push_back({text.Utf8(), surface.ForeColor, x, y});
                      },
                  .width = [](const Graphics&, const String& text) { return 7.0 * Len(text); }});
}

/// The alignment of the cell's own text, or the coordinates of any other.
std::string PlaceOf(const DrawnText& drawn, QSize cell, bool own) {
  QFont font = SystemFont(TextFont::System);
  font.setPixelSize(Graphics().TextSize);
  const QFontMetricsF metrics(font);
  const double width = metrics.horizontalAdvance(QString::fromStdString(drawn.text));
  std::string place = "x" + std::to_string(drawn.x);
  if (own && drawn.x != 4 && drawn.x != 21) {
    if (std::abs(drawn.x + width / 2 - cell.width() / 2.0) <= 2) place = "centre";
    if (std::abs(drawn.x + width + 4 - cell.width()) <= 2) place = "right";
  }
  if (std::abs(drawn.y - (cell.height() + metrics.ascent() - metrics.descent()) / 2) > 3)
    place += " y" + std::to_string(drawn.y);
  return place;
}

/// The state of one window as lines.
class WindowWriter {
 public:
  WindowWriter(Window& window, std::string path, std::map<std::string, Ref<Picture>>& canvases,
               std::vector<StateLine>& lines)
      : window_(window),
        frame_(*window.Native().frame),
        path_(std::move(path)),
        canvases_(canvases),
        lines_(lines),
        ratio_(frame_.devicePixelRatioF()) {
    if (frame_.isVisible()) screen_ = ScreenOf(frame_);
  }

  void Write() {
    WriteWindow();
    for (Control* control : window_.Controls())
      if (auto* rect = dynamic_cast<RectControl*>(control)) WriteControl(*rect);
    WriteStale();
  }

 private:
  void Line(const std::string& path, const std::string& text, const std::string& change = {}) {
    lines_.push_back({path_ + path, text, change});
  }

  static std::string NameOf(const RectControl& control) {
    return control.Name().Utf8() + (control.Index() > 0 ? "(" + std::to_string(control.Index()) + ")" : "");
  }

  void WriteWindow() {
    // A number that stands alone in a title is a measured time.
    const QString title = frame_.windowTitle().replace(QRegularExpression("(^|  )\\d+(?=  |$)"), "\\1<time>");
    std::string text = Quoted(title) + " " + std::to_string(window_.Width()) + "x" + std::to_string(window_.Height());
    QWidget* bar = window_.Native().bar;
    if (!bar) text += " at " + std::to_string(window_.Left()) + "," + std::to_string(window_.Top());
    if (!frame_.isVisible()) text += " hidden";
    if (frame_.isMinimized()) text += " minimised";
    if (frame_.isActiveWindow()) text += " active";
    if (frame_.minimumSize() == frame_.maximumSize()) text += " fixed";
    if (const auto* menus = qobject_cast<QMenuBar*>(bar)) {
      Line("/limits", std::to_string(window_.MinWidth()) + ".." + std::to_string(window_.MaxWidth()) +
                          " wide, at least " + std::to_string(window_.MinHeight()) + " high");
      text += ", menus";
      for (QAction* action : menus->actions())
        text += " " + action->text().remove('&').toStdString() +
                (frame_.isVisible() && !menus->rect().contains(menus->actionGeometry(action)) ? " CUT OFF" : "");
    }
    Line("", text + Accessible(frame_, frame_.windowTitle()));
  }

  /// Role, name if it is not the caption, description and tool tip.
  static std::string Accessible(QWidget& widget, const QString& caption) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&widget);
    if (!face) return ", not accessible";
    std::string text = ", ";
    text += QMetaEnum::fromType<QAccessible::Role>().valueToKey(face->role());
    const QString name = face->text(QAccessible::Name), about = face->text(QAccessible::Description);
    if (name != caption) text += " " + Quoted(name);
    if (!about.isEmpty()) text += ", described " + Quoted(about);
    if (!widget.toolTip().isEmpty() && widget.toolTip() != about) text += ", tip " + Quoted(widget.toolTip());
    return text;
  }

  void WriteControl(RectControl& control) {
    QWidget& widget = *control.NeedNative().widget;
    QWidget* content = window_.Native().content;
    std::string text =
        ClassOf(control) + " " + Place({control.Left(), control.Top(), control.Width(), control.Height()});
    if (!widget.isVisibleTo(content)) text += " hidden";
    if (!widget.isEnabledTo(content)) text += " disabled";
    if (widget.hasFocus()) text += " focus";
    if (!CaptionFits(control)) text += " CUT OFF";
    QString caption;
    if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
      caption = button->text().remove('&');
      text += " " + Quoted(caption);
      if (button->isChecked()) text += " checked";
      if (!button->icon().isNull()) {
        const QImage icon = button->icon().pixmap(button->iconSize()).toImage();
        text += " icon " + std::to_string(icon.width()) + "x" + std::to_string(icon.height()) + ": " + Shapes(icon, 0);
      }
    }
    if (const auto* native = dynamic_cast<NativePushButton*>(&control.NeedNative()))
      text += std::string(native->isDefault ? " default" : "") + (native->isCancel ? " cancel" : "");
    if (const auto* label = qobject_cast<QLabel*>(&widget)) {
      caption = label->text();
      text += " " + Quoted(caption) + " " + ColorOf(label->palette().color(QPalette::WindowText).rgb()) +
              (label->font().bold() ? " bold" : "") + (label->alignment() & Qt::AlignHCenter ? " centred" : "");
    }
    if (const auto* menu = qobject_cast<QComboBox*>(&widget)) {
      text += " rows";
      for (int row = 0; row < menu->count(); ++row)
        text += std::string(row == menu->currentIndex() ? " >" : " ") + Quoted(menu->itemText(row));
    }
    if (const auto* slider = qobject_cast<QSlider*>(&widget))
      text += QString(" %1 of %2..%3").arg(slider->value()).arg(slider->minimum()).arg(slider->maximum()).toStdString();
    if (const auto* bar = qobject_cast<QProgressBar*>(&widget))
      text += QString(" %1 of %2").arg(bar->value()).arg(bar->maximum()).toStdString();
    if (const auto* panel = dynamic_cast<PagePanel*>(&control)) text += " page " + std::to_string(panel->Value());
    Line("/" + NameOf(control), text + Accessible(widget, caption));
    if (screen_.isNull()) return;
    if (dynamic_cast<Rectangle*>(&control))
      Line("/" + NameOf(control) + " colour", ColorOf(screen_.pixel(InFrame(widget, ratio_).center())));
    if (auto* list = dynamic_cast<Listbox*>(&control)) WriteList(*list);
    if (auto* canvas = dynamic_cast<Canvas*>(&control)) WriteCanvas(*canvas);
  }

  /// The canvas as on the screen, and what has changed since the previous call.
  void WriteCanvas(Canvas& canvas) {
    const std::string name = "/" + NameOf(canvas) + " picture";
    QWidget& widget = *canvas.NeedNative().widget;
    if (!widget.isVisible() || widget.size().isEmpty()) return;
    // The menu bar's height depends on the fonts, so that at some scales a canvas below it begins within a device
    // pixel. Its backing image does not; where the screen differs from it, a line of its own reports that.
    const bool whole = ratio_ == std::floor(ratio_) || !window_.Native().bar;
    const QImage picture = whole ? screen_.copy(InFrame(widget, ratio_) & screen_.rect())
                                 : ToQImage(canvas.Image()).convertToFormat(QImage::Format_RGB32);
    Ref<Picture>& before = canvases_[path_ + name];
    std::string change;
    if (before && QSize(before->Width(), before->Height()) == picture.size())
      if (const auto [count, box] = Differing(ToQImage(before), picture); count > 0)
        change = ", " + std::to_string(count) + " pixels differ within " + Place(box);
    before = ToPicture(picture);
    Line(name, TextOf(picture) + PointerOf(widget), change);
  }

  static std::string PointerOf(const QWidget& widget) {
    if (!widget.testAttribute(Qt::WA_SetCursor)) return "";
    const QCursor pointer = widget.cursor();
    if (pointer.pixmap().isNull()) return ", pointer shape " + std::to_string(pointer.shape());
    const QPoint hot = pointer.hotSpot();
    std::string text = ", pointer";
    for (const int id : {168, 173, 174, 177})
      if (ResourceFork().getCursor(id).Shape().cursor.pixmap().toImage() == pointer.pixmap().toImage())
        text += " " + std::to_string(id);
    return text + " hot at " + std::to_string(hot.x()) + "," + std::to_string(hot.y()) + " " +
           Digest(pointer.pixmap().toImage());
  }

  void WriteList(Listbox& list) {
    auto& view = *static_cast<QTableView*>(static_cast<NativeListbox&>(list.NeedNative()).view);
    const std::string name = "/" + NameOf(list) + " ";
    std::string columns;
    for (int column = 0; column < list.ColumnCount(); ++column) {
      const int heading = view.model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
      columns += std::string(column > 0 ? " " : "") + (heading & Qt::AlignHCenter ? "" : "left ") +
                 view.model()->headerData(column, Qt::Horizontal).toString().toStdString() + ":" +
                 std::to_string(view.isColumnHidden(column) ? 0 : view.columnWidth(column));
    }
    if (view.horizontalHeader()->isVisibleTo(&view)) Line(name + "columns", columns);
    std::string rows = std::to_string(list.ListCount());
    const QRect box = InFrame(*list.NeedNative().widget, ratio_);
    if (const int first = view.rowAt(0); first >= 0) {
      rows += ", from " + std::to_string(first) + " on";
      if (const int above = -view.rowViewportPosition(first); above > 0) rows += ", cut by " + std::to_string(above);
      const QScrollBar& bar = *view.verticalScrollBar();
      if (bar.value() > 0)
        rows += ", bar at " + std::to_string(100 * bar.value() / (bar.maximum() + bar.pageStep())) + " %";
    } else if (Shapes(screen_.copy(box).copy(box.width() / 4, box.height() / 3, box.width() / 2, box.height() / 3),
                      0xFFFFFFFFU) != "") {
      rows += ", a hint at the centre";
    }
    if (!IsFramed(box)) rows += " WITHOUT ITS FRAME";
    Line(name + "rows", rows);
    for (int row = 0; row < list.ListCount(); ++row) WriteRow(list, view, row, name + "row " + std::to_string(row));
  }

  /// Whether a line of one colour is seen at all four sides of the box, whose edges may cut through device pixels.
  bool IsFramed(const QRect& box) const {
    const auto colors = [&](const QPoint& outermost, const QPoint& inward) {
      return std::set<QRgb>{screen_.pixel(outermost), screen_.pixel(outermost + inward)};
    };
    const QPoint middle = box.center();
    std::set<QRgb> everywhere = colors({middle.x(), box.top()}, {0, 1});
    for (const auto& side : {colors({middle.x(), box.bottom()}, {0, -1}), colors({box.left(), middle.y()}, {1, 0}),
                             colors({box.right(), middle.y()}, {-1, 0})})
      std::erase_if(everywhere, [&](QRgb color) { return !side.contains(color); });
    everywhere.erase(0xFFFFFFFFU);
    everywhere.erase(screen_.pixel(box.left() - 3, middle.y()));
    return !everywhere.empty();
  }

  void WriteRow(Listbox& list, QTableView& view, int row, const std::string& name) {
    std::string text;
    std::vector<std::pair<int, std::string>> shapes;
    std::set<std::string> grounds;
    for (int column = 0; column < list.ColumnCount(); ++column) {
      const QModelIndex index = view.model()->index(row, column);
      const QString own = ToQString(list.Cell(row, column));
      std::string cell;
      if (!view.isColumnHidden(column))
        cell = WriteCell(view, index, own, grounds, shapes);
      else if (!own.isEmpty())
        cell = Quoted(own) + " unseen";
      const QString tip = QTextDocumentFragment::fromHtml(index.data(Qt::ToolTipRole).toString()).toPlainText();
      if (!tip.isEmpty()) cell += " tip " + Quoted(tip);
      if (!cell.empty()) text += "; " + std::to_string(column) + ": " + cell;
    }
    std::string ground;
    for (const std::string& color : grounds) ground += " " + color;
    Line(name, (list.Selected(row) ? "selected, on" : "on") + ground + text);
    for (const auto& [column, shape] : shapes) Line(name + " cell " + std::to_string(column), shape);
  }

  /// The texts of a cell; its background and the shapes on it are added to the row's.
  std::string WriteCell(QTableView& view, const QModelIndex& index, const QString& own, std::set<std::string>& grounds,
                        std::vector<std::pair<int, std::string>>& shapes) {
    QStyleOptionViewItem option;
    option.rect = view.visualRect(index);
    option.state = QStyle::State_Enabled;
    if (view.selectionModel()->isSelected(index)) option.state |= QStyle::State_Selected;
    const QSize size = option.rect.size();
    QImage image((QSizeF(size) * ratio_).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio_);
    image.fill(Qt::white);
    RecordTexts();
    {
      const PaintScope scope;
      QPainter painter(&image);
      painter.translate(-option.rect.topLeft());
      view.itemDelegateForIndex(index)->paint(&painter, option, index);
    }
    InstallTextDrawing();
    std::string text;
    for (const DrawnText& drawn : drawnTexts)
      text += (text.empty() ? "" : " ") +
              (drawn.text.ends_with("…") ? "cut short" : Quoted(QString::fromStdString(drawn.text))) + " " +
              ColorOf(drawn.color) + " " + PlaceOf(drawn, size, drawn.text == own.toStdString());
    const QRgb ground = image.pixel(0, 0);
    grounds.insert(ColorOf(ground));
    if (index.data(Qt::CheckStateRole).isValid()) {
      const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
      text = (checked ? "[x] " : "[ ] ") + text;
      QPainter(&image).fillRect(0, 0, 20, size.height(), QColor(ground));  // the box is the style's
    }
    // The lines of the grid are at the right and at the bottom.
    constexpr QRgb kGrid = 0xFFD8D8D8U;
    int width = image.width(), height = image.height();
    while (image.pixel(width - 1, 0) == kGrid) --width;
    while (image.pixel(0, height - 1) == kGrid) --height;
    const std::string shape = Shapes(image.copy(0, 0, width, height), ground);
    if (!shape.empty()) shapes.emplace_back(index.column(), shape);
    return text;
  }

  /// Where the screen does not show what the window would paint now.
  void WriteStale() {
    const QRect stale = StaleIn(frame_);
    if (!stale.isEmpty()) Line("/NOT REPAINTED", Place(stale));
  }

  Window& window_;
  QWidget& frame_;
  std::string path_;
  std::map<std::string, Ref<Picture>>& canvases_;
  std::vector<StateLine>& lines_;
  double ratio_;
  QImage screen_;  ///< the window as on the screen, null while it is hidden
};

void WriteMenus(std::vector<StateLine>& lines) {
  Application* application = Application::Current();
  if (!application || !application->MenuBar()) return;
  for (const auto& item : application->MenuBar()->Items())  // as if the user had opened each menu
    if (QMenu* menu = item->NativeItem().menu) emit menu->aboutToShow();
  for (const auto& item : application->MenuBar()->Items()) {
    const QAction* action = item->NativeItem().action;
    if (!action) continue;
    std::string text = action->isSeparator() ? "separator" : Quoted(QString(action->text()).remove('&'));
    if (item->NativeItem().menu) text += " menu";
    if (!action->shortcut().isEmpty())
      text += " " + action->shortcut().toString(QKeySequence::PortableText).toStdString();
    if (!action->isSeparator() && !action->isEnabled()) text += " disabled";
    if (action->isCheckable()) text += action->isChecked() ? " [x]" : " [ ]";
    lines.push_back({"menu/" + item->Name().Utf8(), text});
  }
}

}  // namespace

std::string TextOf(const Ref<Picture>& picture) { return TextOf(ToQImage(picture)); }

bool OnScreen(RectControl& control) { return control.NeedNative().widget->isVisible(); }

bool UpToDateOnScreen(Window& window) { return StaleIn(*window.Native().frame).isEmpty(); }

std::vector<StateLine> VisibleState::Take() {
  // Repaints follow their cause within milliseconds. One that never comes is reported.
  (void)WaitUntil(
      [] {
        bool settled = true;
        for (int i = 0; i < WindowCount(); ++i) settled = settled && StaleIn(*WindowAt(i).Native().frame).isEmpty();
        return settled;
      },
      5000);
  std::vector<StateLine> lines;
  std::map<std::string, int> seen;
  for (int i = 0; i < WindowCount(); ++i) {
    Window& window = WindowAt(i);
    std::string path = ClassOf(window);
    if (const int before = seen[path]++; before > 0 || path == "SpeciesWindow")
      path += " " + std::to_string(before + 1);
    WindowWriter(window, path, canvases_, lines).Write();
  }
  WriteMenus(lines);
  return lines;
}

}  // namespace platform::testing
