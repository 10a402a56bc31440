#include "mainwindow/MapView.h"

#include "appcore/Globals.h"
#include "appcore/Menu.h"

using namespace platform;

namespace {

void Compose(const Ref<Picture>& base, const Ref<Picture>& composed) {
  const bool sameSize = base->Width() == composed->Width() && base->Height() == composed->Height();
  if (sameSize && Globals::x1Draw.Empty()) return composed->CopyWhenAsked(base);
  Graphics g = composed->Graphics();
  g.DrawPicture(base, 0, 0);
  g.ForeColor = Globals::DrawColor;
  g.UseOldRenderer = true;
  for (int i = 0; i <= Globals::x1Draw.Ubound(); ++i)
    g.DrawLine(Globals::x1Draw(i), Globals::y1Draw(i), Globals::x2Draw(i), Globals::y2Draw(i));
}

}  // namespace

const Ref<Picture>& MapView::Shown() const { return Globals::ShowDraw ? drawn : base; }

void MapView::Paint(Graphics& g) const {
  g.UseOldRenderer = Menu::SizeExact();
  if (Globals::ShowDraw) Compose(base, drawn);
  g.DrawPicture(Shown(), 0, 0, g.Width(), g.Height(), 0, 0, base->Width(), base->Height());
}
