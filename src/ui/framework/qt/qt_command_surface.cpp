#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolBar>
#include <algorithm>

#include "ui/framework/application.h"
#include "ui/framework/command_surface.h"
#include "ui/framework/dialog.h"
#include "ui/framework/menu_template.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/framework/qt/touch_target.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kBarName = 371;
constexpr int kFirstCommand = 2000;  // numbers below are controls
constexpr int kListCharacters = 14;
constexpr int kLabelMargin = 4;

std::string_view IconName(int command) {
  switch (command) {
    case 2002:
      return "new";
    case 2003:
      return "delete";
    case 2011:
      return "settings";
    case 2014:
      return "load";
    case 2015:
      return "upload";
    case 2023:
      return "reply";
    case 2025:
      return "forward";
    case 2030:
      return "send";
    case 2036:
      return "next";
    case 2042:
      return "previous";
    case 2044:
      return "connection";
    default:
      return {};
  }
}

QString KeyText(int command) {
  for (const Accelerator& accelerator : Application::Get()->accelerators()) {
    if (accelerator.command == command) return u'\t' + ToQt(accelerator.key);
  }
  return {};
}

// What a bar no longer shows must not be found, or take keys, any more; it goes once its handlers are done.
void Discard(QObject* object) {
  object->setObjectName({});
  object->deleteLater();
}

// A choice list with its label, as a control of the dialog that the command bar belongs to.
void AddChoiceList(QToolBar& bar, Window& owner, const CommandBarItem& item) {
  auto* dialog = dynamic_cast<Dialog*>(&owner);
  if (dialog == nullptr || dialog->controls() == nullptr) return;
  const int id = item.command;
  auto* list = new QComboBox;
  list->setObjectName(QStringLiteral("control_%1").arg(id));
  list->setAccessibleName(ToQt(item.tool_tip).remove(u':'));
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kListCharacters);
  QObject::connect(list, &QComboBox::activated, list, [dialog, id](int index) {
    const Notification notification{NotifyCode::kChanged, index, -1};
    dialog->Dispatch(Message::kNotify, static_cast<WordParameter>(id),
                     reinterpret_cast<LongParameter>(&notification));
  });
  auto* label = new QLabel(ToQt(item.tool_tip));
  label->setMargin(kLabelMargin);
  bar.addWidget(label);
  bar.addWidget(list);
  dialog->controls()->controls.insert(id, list);
}

// Menu titles as high as the buttons beside them, for a pen.
class MenuBarStyle : public QProxyStyle {
 public:
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override {
    const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* bar = qobject_cast<const QMenuBar*>(widget);
    if (type != CT_MenuBarItem || bar == nullptr) return usual;
    const QWidget* buttons = bar->cornerWidget();
    const int beside = buttons == nullptr ? 0 : buttons->sizeHint().height();
    return {usual.width(), std::max({usual.height(), kTouchTarget, beside})};
  }

  // The toolkit's style underlines titles and the room beside them in pieces, which looks like stray lines.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element != CE_MenuBarItem && element != CE_MenuBarEmptyArea) {
      return QProxyStyle::drawControl(element, option, painter, widget);
    }
    painter->save();
    painter->setClipRect(option->rect.adjusted(0, 0, 0, -1), Qt::IntersectClip);
    QProxyStyle::drawControl(element, option, painter, widget);
    painter->restore();
  }
};

}  // namespace

// Menus and buttons share one row: small screens have no height to spare.
CommandSurface::CommandSurface(Window& owner) : owner_(owner), native_(std::make_unique<NativeSurface>()) {
  QWidget* widget = WidgetOf(&owner);
  auto* main_window = qobject_cast<QMainWindow*>(widget);
  native_->menu_bar = main_window != nullptr ? main_window->menuBar() : new QMenuBar(widget);
  native_->menu_bar->setNativeMenuBar(false);
  auto* style = new MenuBarStyle;
  style->setParent(native_->menu_bar);
  native_->menu_bar->setStyle(style);
  native_->tool_bar = new QToolBar(native_->menu_bar);
  native_->tool_bar->setIconSize({24, 24});
  native_->tool_bar->setAccessibleName(ToQt(LoadString(kBarName)));
  native_->menu_bar->setCornerWidget(native_->tool_bar, Qt::TopRightCorner);
  if (main_window == nullptr && widget->layout() != nullptr) widget->layout()->setMenuBar(native_->menu_bar);
}

CommandSurface::~CommandSurface() = default;

void CommandSurface::SetMenu(int menu) {
  if (menu == menu_) return;
  menu_ = menu;
  for (QAction* action : native_->menu_actions) Discard(action);
  for (QAction* popup : native_->menu_bar->actions()) Discard(popup->menu());
  native_->menu_bar->clear();
  native_->menu_actions.clear();
  const std::vector<MenuPopup> popups = LoadMenu(menu);
  popups_ = static_cast<int>(popups.size());
  for (const MenuPopup& popup : popups) {
    QMenu* native_popup = native_->menu_bar->addMenu(ToQt(popup.title));
    for (const MenuItem& item : popup.items) {
      if (item.command == 0) {
        native_popup->addSeparator();
        continue;
      }
      QAction* action = native_popup->addAction(ToQt(item.text) + KeyText(item.command));
      action->setObjectName(QStringLiteral("menu_%1").arg(item.command));
      native_->menu_actions.insert(item.command, action);
      const int command = item.command;
      QObject::connect(action, &QAction::triggered, native_->menu_bar, [this, command] {
        owner_.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
      });
    }
    QObject::connect(native_popup, &QMenu::aboutToShow, native_->menu_bar, [this] { QueryState(); });
  }
}

void CommandSurface::SetCommandBar(int tool_tips) {
  for (QAction* action : native_->tool_bar->actions()) Discard(action);
  native_->tool_bar->clear();
  native_->bar_actions.clear();
  bool first = true;
  for (const CommandBarItem& item : LoadCommandBar(tool_tips)) {
    if (item.command == 0) {
      if (!first) native_->tool_bar->addSeparator();
      first = false;
      continue;
    }
    first = false;
    if (item.command < kFirstCommand) {
      AddChoiceList(*native_->tool_bar, owner_, item);
      continue;
    }
    QAction* action = native_->tool_bar->addAction(IconOf(IconName(item.command)), ToQt(item.tool_tip));
    action->setObjectName(QStringLiteral("bar_%1").arg(item.command));
    action->setToolTip(ToQt(item.tool_tip));
    native_->bar_actions.insert(item.command, action);
    if (QWidget* button = native_->tool_bar->widgetForAction(action)) {
      button->setObjectName(QStringLiteral("button_%1").arg(item.command));
      button->setMinimumSize(kTouchTarget, kTouchTarget);
      button->setAccessibleName(ToQt(item.tool_tip));
    }
    const int command = item.command;
    QObject::connect(action, &QAction::triggered, native_->menu_bar, [this, command] {
      owner_.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
    });
  }
  native_->tool_bar->adjustSize();
  native_->menu_bar->setCornerWidget(native_->tool_bar, Qt::TopRightCorner);
}

void CommandSurface::EnableButton(int command, bool enabled) {
  if (QAction* action = native_->bar_actions.value(command)) action->setEnabled(enabled);
}

void CommandSurface::PressButton(int command, bool pressed) {
  if (QAction* action = native_->bar_actions.value(command)) {
    action->setCheckable(true);
    action->setChecked(pressed);
  }
}

bool CommandSurface::Offers(int command) const {
  return native_->menu_actions.contains(command) || native_->bar_actions.contains(command);
}

MenuState CommandSurface::QueryState() const {
  MenuState state;
  for (int popup = 0; popup < popups_; ++popup) {
    owner_.Dispatch(Message::kInitMenuPopup, reinterpret_cast<WordParameter>(&state), popup);
  }
  for (auto item = native_->menu_actions.begin(); item != native_->menu_actions.end(); ++item) {
    item.value()->setEnabled(state.IsEnabled(item.key()));
    item.value()->setCheckable(state.IsChecked(item.key()));
    item.value()->setChecked(state.IsChecked(item.key()));
  }
  return state;
}

// The items are the menu bar's own: same text, same state, same command.
void PopUpCommands(const CommandSurface& surface, std::span<const int> commands, const QPoint& place) {
  surface.QueryState();
  const NativeSurface& native = *surface.native();
  auto* menu = new QMenu(native.menu_bar);
  menu->setObjectName(QStringLiteral("context_menu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const int command : commands) {
    if (command == 0) {
      menu->addSeparator();
    } else if (QAction* action = native.menu_actions.value(command)) {
      menu->addAction(action);
    }
  }
  menu->popup(place);
}

}  // namespace celldesk
