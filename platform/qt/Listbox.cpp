#include "platform/widgets/Listbox.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

namespace {

constexpr int kMargin = 4;  ///< between the edge of a cell and its text
constexpr int kEndMargin = 2;
constexpr int kIndicatorSize = 13;
constexpr Color kSelection = 0xCDE4FF;
constexpr Color kGrid = 0xD8D8D8;
constexpr Color kFocus = 0x5C9BD6;
constexpr Color kHint = 0x707070;
constexpr Color kFrame = 0xB4B4B4;

/// Darkens the pixels by a colour, so that what was painted behind the text remains visible.
void Tint(PlaneView<OpaqueColor> pixels, Color tint) {
  const auto times = [](int a, int b) { return a * b / 255; };
  for (int y = 0; y < pixels.height; ++y)
    for (int x = 0; x < pixels.width; ++x) {
      OpaqueColor& pixel = pixels(x, y);
      pixel = OpaqueRGB(times(Red(pixel), Red(tint)), times(Green(pixel), Green(tint)), times(Blue(pixel), Blue(tint)));
    }
}

class CellDelegate : public QStyledItemDelegate {
 public:
  CellDelegate(QObject* parent, NativeListbox& native) : QStyledItemDelegate(parent), native_(native) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool framed = (option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_KeyboardFocusChange);
    native_.PaintCell(*painter, option.rect, index, (option.state & QStyle::State_Selected) != 0, framed);
  }
  /// The view's mouse handling toggles the boxes; Qt would toggle them a second time here.
  bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&, const QModelIndex&) override {
    return false;
  }

 private:
  NativeListbox& native_;
};

class View : public QTableView {
 public:
  View(QWidget* parent, NativeListbox& native) : QTableView(parent), native_(native) {}

 protected:
  /// Paints the frame in rectangles. At a fractional display scale Qt's own lines may be outside the clip.
  bool event(QEvent* event) override {
    if (event->type() != QEvent::Paint) return QTableView::event(event);
    QPainter painter(this);
    for (const QRect& side : {QRect(0, 0, width(), 1), QRect(0, height() - 1, width(), 1), QRect(0, 0, 1, height()),
                              QRect(width() - 1, 0, 1, height())})
      painter.fillRect(side, ToQColor(kFrame));
    return true;
  }
  void scrollContentsBy(int dx, int dy) override {
    native_.stale.translate(dx, dy);
    QTableView::scrollContentsBy(dx, dy);
  }
  /// Qt would ask the server for the pointer, to find the cell below it, and wait until earlier paints are done.
  void verticalScrollbarValueChanged(int) override {}
  void mousePressEvent(QMouseEvent* event) override {
    const QPoint at = PixelOf(event->position());
    const QModelIndex index = indexAt(at);
    pressedBox_ = QPersistentModelIndex();
    walked_ = false;
    if (event->button() != Qt::LeftButton) return;
    if (!index.isValid() && selectionMode() == QAbstractItemView::SingleSelection) return clearSelection();
    if (index.isValid()) {
      const QPoint corner = visualRect(index).topLeft();
      const int row = index.row(), column = index.column();
      if (native_.Ask(native_.list.CellClick, row, column, at.x() - corner.x(), at.y() - corner.y())) return;
      if (!index.model() || row >= model()->rowCount()) return;  // the handler removed rows
      if (native_.IsCheckBox(column) && native_.IndicatorRect(index).contains(at)) {
        setAutoScroll(false);  // the box must stay under the pointer
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        setAutoScroll(true);
        pressedBox_ = index;
        return;
      }
    }
    passesClick_ = true;
    QTableView::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (passesClick_) QTableView::mouseMoveEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const QPersistentModelIndex pressed = pressedBox_;
    pressedBox_ = QPersistentModelIndex();
    const bool passes = passesClick_;
    passesClick_ = false;
    if (pressed.isValid() && native_.IndicatorRect(pressed).contains(PixelOf(event->position())))
      native_.Toggle(pressed);
    else if (passes)
      QTableView::mouseReleaseEvent(event);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const QPersistentModelIndex index = indexAt(PixelOf(event->position()));
    const bool editable = index.isValid() && (index.flags() & Qt::ItemIsEditable);
    mousePressEvent(event);  // a double click counts as two clicks
    if (editable && index.isValid() && passesClick_) {
      passesClick_ = false;
      edit(index);
    }
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Space && currentIndex().isValid() && native_.IsCheckBox(currentIndex().column()))
      return native_.Toggle(currentIndex());
    // Copying is a menu command. The window handles the arrow keys unless they select rows or the list got the focus by
    // Tab.
    const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (event->matches(QKeySequence::Copy) || (arrow && !walked_ && !native_.list.Change)) return event->ignore();
    QTableView::keyPressEvent(event);
  }
  void focusInEvent(QFocusEvent* event) override {
    QTableView::focusInEvent(event);
    const bool forward = event->reason() == Qt::TabFocusReason;
    const bool byKey = forward || event->reason() == Qt::BacktabFocusReason;
    walked_ |= byKey;
    native_.Raise(native_.list.GotFocus);
    if (!hasFocus() && byKey) PassOn(forward);
  }
  bool focusNextPrevChild(bool next) override {
    const bool moved = QTableView::focusNextPrevChild(next);
    viewport()->update();  // the first Tab shows the frame around the current cell, even if the focus stays here
    return moved;
  }
  void wheelEvent(QWheelEvent* event) override {
    QTableView::wheelEvent(event);
    if (verticalScrollBar()->maximum() > 0) event->accept();  // at its end too: otherwise the window would scroll
  }
  void resizeEvent(QResizeEvent* event) override {
    QTableView::resizeEvent(event);
    native_.FitColumns();
  }
  void showEvent(QShowEvent* event) override {
    QTableView::showEvent(event);
    if (native_.wantedTop >= 0) native_.list.ScrollPosition(native_.wantedTop);
  }
  void paintEvent(QPaintEvent* event) override {
    const PaintScope scope;
    QTableView::paintEvent(event);
    if (model()->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(ToQColor(kHint));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, ToQString(native_.settings.hint));
  }

 private:
  /// If GotFocus moved the focus away, passes it to the next control, so that Tab does not stop here.
  void PassOn(bool forward) {
    QWidget* next = this;
    const auto takes = [&] {
      return (next->focusPolicy() & Qt::TabFocus) && !next->focusProxy() && next->isVisible() && next->isEnabled();
    };
    do next = forward ? next->nextInFocusChain() : next->previousInFocusChain();
    while (next != this && !takes());
    if (next != this) next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  }

  NativeListbox& native_;
  QPersistentModelIndex pressedBox_;
  bool passesClick_ = false;  ///< Qt handles the click
  bool walked_ = false;       ///< the focus came by Tab, and the mouse was not pressed since
};

class Header : public QHeaderView {
 public:
  Header(QWidget* parent, NativeListbox& native) : QHeaderView(Qt::Horizontal, parent), native_(native) {
    QObject::connect(this, &QHeaderView::sectionClicked, this, [this](int column) {
      native_.RaiseFromUser([this, column] { native_.list.PressHeader(column); });
    });
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    setSectionsClickable(static_cast<bool>(native_.list.HeaderPressed));
    QHeaderView::mousePressEvent(event);
  }

 private:
  NativeListbox& native_;
};

/// The font of a surface's text.
QFont CellFont() {
  QFont font = SystemFont(TextFont::System);
  font.setPixelSize(Graphics().TextSize);
  return font;
}

QPalette BlackOnWhite(QPalette palette) {
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  palette.setColor(QPalette::Highlight, ToQColor(kSelection));
  palette.setColor(QPalette::HighlightedText, Qt::black);
  return palette;
}

NativeListbox& ListOf(const RectControl& control) { return static_cast<NativeListbox&>(control.NeedNative()); }

}  // namespace

NativeListbox::NativeListbox(NativeWindow& owner, Listbox& control)
    : NativeControl(owner, nullptr), list(control), model(std::make_unique<CellModel>(*this)) {
  view = new View(owner.content, *this);
  widget = view;
  view->setModel(model.get());
  view->setItemDelegate(new CellDelegate(view, *this));
  view->setHorizontalHeader(new Header(view, *this));
  view->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  view->horizontalHeader()->setHighlightSections(false);
  view->horizontalHeader()->setMinimumSectionSize(1);
  view->verticalHeader()->hide();
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->verticalHeader()->setMinimumSectionSize(1);
  view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view->setVerticalScrollMode(
      QAbstractItemView::ScrollPerPixel);  // ScrollPerItem may give the bar a range of one pixel
  view->setSelectionBehavior(QAbstractItemView::SelectRows);
  view->setCornerButtonEnabled(false);
  view->setWordWrap(false);
  view->setTabKeyNavigation(false);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setFrameShape(QFrame::Box);
  view->setFrameShadow(QFrame::Plain);
  view->setLineWidth(1);
  view->setPalette(BlackOnWhite(view->palette()));
  QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, view, [this] {
    if (!selectionSettles) ChangeSelection([] {});
  });
  for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
    QObject::connect(model.get(), change, view, [this] { SyncHint(); });
  Setup({});
}

NativeListbox::~NativeListbox() {
  selectionSettles = true;
  delete widget;
}

void NativeListbox::Invalidate(const QRect& area) {
  if (stale.isEmpty())
    QMetaObject::invokeMethod(
        view, [this] { view->viewport()->update(std::exchange(stale, {})); }, Qt::QueuedConnection);
  stale += area;
}

void NativeListbox::Refresh() {
  stale = {};
  view->visualRect(model->index(0, 0));  // forces a pending layout
  view->viewport()->update();            // its cells are painted by handlers, from what the list does not know
  PutOnScreen(window, *widget);
}

void NativeListbox::Setup(const ListboxSettings& wanted) {
  settings = wanted;
  std::vector<CellModel::Column> columns;
  const String widths = wanted.columnWidths.Empty() ? "*" : wanted.columnWidths;
  for (int i = 1;; ++i) {
    const String field = NthField(widths, ",", i);
    if (field.Empty()) break;
    columns.emplace_back().width = InStr(field, "*") > 0 ? -1 : static_cast<int>(Val(field));
  }
  if (columns.size() < wanted.headings.size()) columns.resize(wanted.headings.size());
  QStringList headings;
  for (const String& heading : wanted.headings) headings.append(ToQString(heading));
  ChangeSelection([&] { model->SetColumns(std::move(columns), headings); });
  view->horizontalHeader()->setVisible(!wanted.headings.empty());
  view->verticalHeader()->setDefaultSectionSize(wanted.defaultRowHeight);
  view->setShowGrid(false);
  view->setSelectionMode(wanted.multipleSelection ? QAbstractItemView::ExtendedSelection
                                                  : QAbstractItemView::SingleSelection);
  FitColumns();
  SyncHint();
}

void NativeListbox::SyncHint() {
  view->setAccessibleDescription(model->rowCount() == 0 ? ToQString(settings.hint) : QString());
}

void NativeListbox::FitColumns() {
  int used = 0;
  for (int i = 0; i < model->columnCount(); ++i) used += std::max(0, model->ColumnAt(i).width);
  for (int i = 0; i < model->columnCount(); ++i) {
    int width = model->ColumnAt(i).width;
    if (width < 0) width = std::max(0, view->viewport()->width() - used);
    view->setColumnHidden(i, width == 0);
    if (width > 0) view->setColumnWidth(i, width);
  }
}

std::vector<int> NativeListbox::SelectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : view->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

int NativeListbox::SelCount() const { return static_cast<int>(SelectedRows().size()); }

void NativeListbox::ChangeSelection(const std::function<void()>& change) {
  const bool settles = std::exchange(selectionSettles, true);
  change();
  selectionSettles = settles;
  auto rows = SelectedRows();
  if (settles || rows == knownSelection) return;
  knownSelection = std::move(rows);
  Raise(list.Change);
}

bool NativeListbox::IsCheckBox(int column) const { return model->ColumnAt(column).type == Listbox::kTypeCheckBox; }

QRect NativeListbox::IndicatorRect(const QModelIndex& index) const {
  const QRect cell = view->visualRect(index);
  return {cell.x() + kMargin, cell.y() + (cell.height() - kIndicatorSize) / 2, kIndicatorSize, kIndicatorSize};
}

int NativeListbox::TextLeft(int column) const {
  return IsCheckBox(column) ? kMargin + kIndicatorSize + kMargin : kMargin;
}

QString NativeListbox::Tip(int row, int column) {
  std::optional<String> tip;
  if (list.CellTip && !WindowClosed()) Dispatch([&] { tip = list.CellTip(row, column); });
  if (!tip) {
    const QString text = model->At(row, column).text();
    const double room = view->columnWidth(column) - TextLeft(column) - kEndMargin;
    if (!view->isColumnHidden(column) && QFontMetricsF(CellFont()).horizontalAdvance(text) > room)
      tip = FromQString(text);
  }
  return tip && !tip->Empty() ? Qt::convertFromPlainText(ToQString(*tip), Qt::WhiteSpaceNormal) : QString();
}

void NativeListbox::Toggle(const QModelIndex& index) {
  const bool checked = model->At(index.row(), index.column()).checkState() == Qt::Checked;
  model->setData(index, static_cast<int>(checked ? Qt::Unchecked : Qt::Checked), Qt::CheckStateRole);
}

void NativeListbox::PaintCell(QPainter& painter, const QRect& rect, const QModelIndex& index, bool selected,
                              bool framed) {
  const int grid = settings.gridLines ? 1 : 0;
  const int width = rect.width() - grid, height = rect.height() - grid;
  const int row = index.row(), column = index.column();
  if (width <= 0 || height <= 0) return;
  const double ratio = view->devicePixelRatioF();
  QImage image(static_cast<int>(std::ceil(width * ratio)), static_cast<int>(std::ceil(height * ratio)),
               QImage::Format_RGB32);
  image.fill(Qt::white);
  const PlaneView<OpaqueColor> pixels{reinterpret_cast<Color*>(image.bits()), image.width(), image.height(),
                                      image.width()};

  const auto surface = [&] { return Graphics(pixels, ratio, width, height); };

  Graphics behind = surface();
  Ask(list.CellBackgroundPaint, behind, row, column);
  if (selected) Tint(pixels, kSelection);

  const int textLeft = TextLeft(column);
  if (IsCheckBox(column)) {
    QPainter box(&image);
    box.scale(ratio, ratio);
    QStyleOptionButton option;
    option.palette = view->palette();
    option.rect = IndicatorRect(index).translated(-view->visualRect(index).topLeft());
    option.state = QStyle::State_Enabled;
    option.state |= list.CellCheck(row, column) ? QStyle::State_On : QStyle::State_Off;
    view->style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &box, view);
  }

  // The handler may change the surface; the default text is drawn on another one.
  Graphics g = surface();
  const QString whole = model->At(row, column).text();
  const QFontMetricsF metrics(CellFont());
  const int alignment = model->ColumnAt(column).alignment;
  const auto textX = [&](double textWidth) {
    // A text too wide for the cell shows its beginning.
    const int textWide = static_cast<int>(std::ceil(textWidth));
    if (alignment == Listbox::kAlignRight) return std::max(0, width - kMargin - textWide);
    if (alignment == Listbox::kAlignCenter)
      return std::max(textLeft, textLeft - kMargin + (width - textLeft + kMargin - textWide) / 2);
    return textLeft;
  };
  const int y = static_cast<int>(std::lround((height + metrics.ascent() - metrics.descent()) / 2));
  if (!Ask(list.CellTextPaint, g, row, column, textX(metrics.horizontalAdvance(whole)), y) && !whole.isEmpty()) {
    const QString shown = metrics.elidedText(whole, Qt::ElideRight, width - textLeft - kEndMargin);
    surface().DrawString(FromQString(shown), textX(metrics.horizontalAdvance(shown)), y);
  }
  if (framed) {
    Graphics frame = surface();
    frame.ForeColor = kFocus;
    frame.DrawRect(0, 0, width, height);
  }
  image.setDevicePixelRatio(ratio);
  painter.drawImage(rect.topLeft(), image);
  if (grid == 0) return;
  painter.fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), ToQColor(kGrid));
  painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), ToQColor(kGrid));
}

std::unique_ptr<NativeControl> Listbox::MakeNative(NativeWindow& window, const String&) {
  return std::make_unique<NativeListbox>(window, *this);
}

void Listbox::Setup(const ListboxSettings& settings) { ListOf(*this).Setup(settings); }

void Listbox::AddRow(const String& text) { ListOf(*this).model->Append(text); }

void Listbox::RemoveRow(int row) {
  auto& native = ListOf(*this);
  native.model->CheckBounds(row, 0);
  native.ChangeSelection([&] { native.model->removeRow(row); });
}

void Listbox::DeleteAllRows() {
  auto& native = ListOf(*this);
  native.ChangeSelection([&] { native.model->removeRows(0, native.model->rowCount()); });
}

int Listbox::ListCount() const { return ListOf(*this).model->rowCount(); }
int Listbox::ColumnCount() const { return ListOf(*this).model->columnCount(); }
int Listbox::SelCount() const { return ListOf(*this).SelCount(); }

bool Listbox::Selected(int row) const {
  const auto& native = ListOf(*this);
  native.model->CheckBounds(row, 0);
  const auto rows = native.SelectedRows();
  return std::binary_search(rows.begin(), rows.end(), row);
}

void Listbox::Selected(int row, bool selected) {
  auto& native = ListOf(*this);
  native.model->CheckBounds(row, 0);
  const auto how = !selected                           ? QItemSelectionModel::Deselect
                   : native.settings.multipleSelection ? QItemSelectionModel::Select
                                                       : QItemSelectionModel::ClearAndSelect;
  native.view->selectionModel()->select(native.model->index(row, 0), how | QItemSelectionModel::Rows);
}

String Listbox::Cell(int row, int column) const { return FromQString(ListOf(*this).model->At(row, column).text()); }

void Listbox::Cell(int row, int column, const String& text) {
  ListOf(*this).model->At(row, column).setText(ToQString(text));
}

bool Listbox::CellTag(int row, int column) const { return ListOf(*this).model->At(row, column).data().toBool(); }
void Listbox::CellTag(int row, int column, bool tag) { ListOf(*this).model->At(row, column).setData(tag); }

bool Listbox::CellCheck(int row, int column) const {
  return ListOf(*this).model->At(row, column).checkState() == Qt::Checked;
}

void Listbox::CellCheck(int row, int column, bool checked) {
  ListOf(*this)
      .model->At(row, column)
      .setData(static_cast<int>(checked ? Qt::Checked : Qt::Unchecked), Qt::CheckStateRole);
}

void Listbox::InvalidateCell(int row, int column) {
  auto& native = ListOf(*this);
  if (row < -1 || row >= ListCount() || column < -1 || column >= ColumnCount() || ListCount() == 0) return;
  QRect area = native.view->viewport()->rect();
  if (row >= 0) {
    area.setTop(native.view->rowViewportPosition(row));
    area.setHeight(native.view->rowHeight(row));
  }
  if (column >= 0) {
    area.setLeft(native.view->columnViewportPosition(column));
    area.setWidth(native.view->columnWidth(column));
  }
  native.Invalidate(area);
}

void Listbox::ColumnAlignment(int column, int alignment) {
  auto& native = ListOf(*this);
  native.model->ColumnAt(column).alignment = alignment;
  // A right-aligned heading is centred: it has no margin to keep from the edge.
  const bool left = alignment != kAlignCenter && alignment != kAlignRight;
  native.model->setHeaderData(column, Qt::Horizontal, left ? QVariant() : QVariant(static_cast<int>(Qt::AlignCenter)),
                              Qt::TextAlignmentRole);
  native.view->viewport()->update();
}

void Listbox::ColumnType(int column, int type) {
  auto& native = ListOf(*this);
  native.model->ColumnAt(column).type = type;
  native.view->viewport()->update();
}

void Listbox::Reveal(int row) {
  auto& native = ListOf(*this);
  const int shown = native.view->horizontalHeader()->logicalIndexAt(0);  // scrollTo ignores hidden cells
  const QModelIndex index = native.model->index(row, shown);
  // scrollTo repaints the cell even if it is in view.
  if (native.view->viewport()->rect().contains(native.view->visualRect(index))) return;
  // Painting the rows is quicker than moving them on the screen: Qt would wait until all earlier paints are done.
  native.view->viewport()->setUpdatesEnabled(false);
  native.view->scrollTo(index);
  native.view->viewport()->setUpdatesEnabled(true);
}

void Listbox::ScrollPosition(int row) {
  auto& native = ListOf(*this);
  native.wantedTop = native.view->isVisible() ? -1 : row;
  if (row >= ListCount())
    native.view->scrollToBottom();
  else if (row >= 0)
    native.view->scrollTo(native.model->index(row, 0), QAbstractItemView::PositionAtTop);
}

void Listbox::PressHeader(int column) {
  auto& native = ListOf(*this);
  native.model->ColumnAt(column);
  if (native.Ask(HeaderPressed, column)) return;
  native.ChangeSelection([&] { native.model->sort(column); });
}

}  // namespace platform
