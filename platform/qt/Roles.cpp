#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

#include "platform/qt/NativeToolkit.h"

namespace platform {

namespace {

constexpr const char* kRole = "role";

QAccessibleInterface* InterfaceOf(const QString&, QObject* object) {
  if (!object || !object->property(kRole).isValid()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), object->property(kRole).value<QAccessible::Role>());
}

}  // namespace

void SetRole(QWidget& widget, QAccessible::Role role) { widget.setProperty(kRole, QVariant::fromValue(role)); }
void InstallRoles() { QAccessible::installFactory(InterfaceOf); }

}  // namespace platform
