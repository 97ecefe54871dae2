#include "shell/ControlEvents.h"

#include <QApplication>
#include <QDialog>
#include <QFocusEvent>
#include <QHash>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>

#include <deque>
#include <utility>

namespace talnik {

namespace {

Key MakeKey(const QKeyEvent& event) {
  Key key;
  key.code = event.key();
  key.shift = event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
  key.keypad = event.modifiers() & Qt::KeypadModifier;
  key.text = event.text();
  key.scanCode = event.nativeScanCode();
  if (key.code == Qt::Key_Enter) key.code = Qt::Key_Return;
  if (key.code == Qt::Key_Backtab) {
    key.code = Qt::Key_Tab;
    key.shift |= Qt::ShiftModifier;
  }
  return key;
}

bool TypesSomething(const Key& key) {
  return !key.text.isEmpty() || key.code == Qt::Key_Return || key.code == Qt::Key_Escape ||
         key.code == Qt::Key_Backspace;
}

/// Sets the identity of a scan code apart from that of a key without one.
constexpr quint32 ScanCodeMark = 0x8000'0000U;

/// The same key at press and release, whatever the modifiers have made of its meaning in between.
quint32 KeyIdentity(const QKeyEvent& event) {
  return event.nativeScanCode() ? event.nativeScanCode() | ScanCodeMark : static_cast<quint32>(event.key());
}

bool InMenuBar(const QWidget* widget) {
  for (; widget && !widget->isWindow(); widget = widget->parentWidget()) {
    if (qobject_cast<const QMenuBar*>(widget)) return true;
  }
  return false;
}

}  // namespace

/// What a form has asked to be told of one control.
struct ControlHandlers {
  std::deque<KeyHandler> keyDown, keyPress, keyUp;
  std::deque<Handler> gotFocus, lostFocus;
};

struct ControlEvents::Impl {
  QPointer<QWidget> form;
  const QObject* identity = nullptr;  ///< the form's address, also after its end
  std::deque<KeyHandler> formKeyDown, formKeyUp;
  QHash<const QObject*, std::shared_ptr<ControlHandlers>> controls;
  QPointer<QWidget> focus;  ///< the control that had the focus in this window last
  bool comingBack = false;

  /// The handlers of `control`, forgotten when it is deleted.
  ControlHandlers& Of(QWidget* control, QObject* context) {
    std::shared_ptr<ControlHandlers>& place = controls[control];
    if (!place) {
      place = std::make_shared<ControlHandlers>();
      QObject::connect(control, &QObject::destroyed, context, [this](QObject* gone) { controls.remove(gone); });
    }
    return *place;
  }

  /// The registered control that `widget` is or is a part of; `widget` itself when there is none.
  QWidget* ControlOf(QWidget* widget) const {
    for (QWidget* at = widget; at && at != form; at = at->parentWidget()) {
      if (controls.contains(at)) return at;
    }
    return widget;
  }

  std::shared_ptr<ControlHandlers> HandlersOf(QWidget* widget) const { return controls.value(ControlOf(widget)); }

  bool IsGone(bool wasVisible) const { return !form || (wasVisible && !form->isVisible()); }
};

/// Watches the keyboard and the focus of the whole process, which has one of it: which keys are down, in which window
/// each was pressed, and what has been seen of the event under way.
class KeyOrder : public QObject {
 public:
  static KeyOrder& OfApplication();

  void Add(const std::shared_ptr<ControlEvents::Impl>& form) { forms_.insert(form->identity, form); }
  void Remove(const QObject* form) { forms_.remove(form); }

  bool eventFilter(QObject* watched, QEvent* event) override;

  static void RunGotFocus(const std::shared_ptr<ControlEvents::Impl>& form, QWidget* control, bool comingBack);

  std::function<bool(quint32 scanCode)> IsDown;  ///< empty where nobody knows

 private:
  using Form = std::shared_ptr<ControlEvents::Impl>;

  struct Down {
    QPointer<QWidget> owner;
    Key key;
    quint64 time = 0;  ///< of the last press or repetition, in ms; 0 when unknown
    bool wasVisible = false;
    bool keyUpDone = false;
  };

  explicit KeyOrder(QApplication* application);

  Form FormOf(QWidget* widget) const;
  bool IsPassedOn(QObject* watched, const QKeyEvent* event);
  void SeeUnderWay(QObject* watched, const QKeyEvent* event);
  bool IsRepetition(const QKeyEvent& event);
  bool Press(QWidget* widget, QKeyEvent& event);
  bool Release(QWidget* widget, QKeyEvent& event);
  static void Run(const Form& form, const QPointer<QWidget>& target, bool wasVisible,
                  const std::deque<KeyHandler>& handlers, Key& key);
  void ForgetReleased();
  void FocusMoved(QWidget* now);
  void MenuLeft(QWidget* widget);

  QHash<const QObject*, Form> forms_;
  QHash<quint32, Down> down_;
  quint32 lastReleased_ = 0;
  Down lastRelease_;
  const QKeyEvent* underWay_ = nullptr;
  QPointer<QObject> seenBy_;
  int lastKey_ = 0;  ///< 0 after the mouse
  Qt::FocusReason reason_ = Qt::OtherFocusReason;
};

KeyOrder& KeyOrder::OfApplication() {
  const QString name = u"keyOrder"_qs;
  if (auto* existing = qApp->findChild<QObject*>(name, Qt::FindDirectChildrenOnly)) {
    return *static_cast<KeyOrder*>(existing);
  }
  auto* made = new KeyOrder(qApp);
  made->setObjectName(name);
  return *made;
}

KeyOrder::KeyOrder(QApplication* application) : QObject(application) {
  application->installEventFilter(this);
  connect(application, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FocusMoved(now); });
}

bool KeyOrder::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWidgetType()) return false;
  auto* widget = static_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (IsPassedOn(watched, key)) return false;
      const QPointer<QObject> first(watched);
      const bool swallowed = event->type() == QEvent::KeyPress ? Press(widget, *key) : Release(widget, *key);
      // A handler may have run an event loop, with other keys in it, before this one is offered to the parents.
      if (first) SeeUnderWay(first, key);
      return swallowed;
    }
    case QEvent::MouseButtonPress:
      lastKey_ = 0;
      return false;
    case QEvent::FocusIn:
      reason_ = static_cast<QFocusEvent*>(event)->reason();
      if (reason_ == Qt::PopupFocusReason) MenuLeft(widget);
      return false;
    default:
      return false;
  }
}

KeyOrder::Form KeyOrder::FormOf(QWidget* widget) const {
  if (InMenuBar(widget)) return nullptr;
  for (; widget; widget = widget->parentWidget()) {
    if (const Form form = forms_.value(widget)) return form->form ? form : nullptr;
    if (widget->isWindow()) return nullptr;
  }
  return nullptr;
}

/// A key that a control does not want is offered to its parents, as the same event; it is to run the handlers once.
bool KeyOrder::IsPassedOn(QObject* watched, const QKeyEvent* event) {
  auto* parent = static_cast<QWidget*>(watched);
  auto* seen = static_cast<QWidget*>(seenBy_.data());
  const bool passedOn = event == underWay_ && seen && seen != parent && parent->isAncestorOf(seen);
  if (passedOn) {
    seenBy_ = watched;
  } else {
    SeeUnderWay(watched, event);
  }
  return passedOn;
}

/// Remembers the event until the event loop goes on; another one may stand at its address later.
void KeyOrder::SeeUnderWay(QObject* watched, const QKeyEvent* event) {
  underWay_ = event;
  seenBy_ = watched;
  QMetaObject::invokeMethod(
      this, [this, event] { underWay_ = underWay_ == event ? nullptr : underWay_; }, Qt::QueuedConnection);
}

/// A held key repeats itself as presses with or without the mark, and with or without releases in between: such a
/// release bears the very time of the press behind it.
bool KeyOrder::IsRepetition(const QKeyEvent& event) {
  constexpr quint64 longestDelay = 1000;
  const quint32 identity = KeyIdentity(event);
  const quint64 time = event.timestamp();
  const bool pair = time != 0 && identity == lastReleased_ && time == lastRelease_.time;
  if (!down_.contains(identity) && identity == lastReleased_ && (pair || event.isAutoRepeat())) {
    down_.insert(identity, lastRelease_);
    return true;
  }
  if (event.isAutoRepeat()) return true;
  const auto held = down_.constFind(identity);
  return held != down_.constEnd() && time != 0 && held->time != 0 && time - held->time < longestDelay;
}

/// Runs the handlers in turn. A key whose control or window is gone after one of them counts as swallowed.
void KeyOrder::Run(const Form& form, const QPointer<QWidget>& target, bool wasVisible,
                   const std::deque<KeyHandler>& handlers, Key& key) {
  for (std::size_t i = 0; i < handlers.size() && !key.swallowed; ++i) {
    handlers[i](key);
    if (!target || form->IsGone(wasVisible)) key.swallowed = true;
  }
}

bool KeyOrder::Press(QWidget* widget, QKeyEvent& event) {
  const Form form = FormOf(widget);
  const quint32 identity = KeyIdentity(event);
  Key key = MakeKey(event);
  lastKey_ = key.code;
  if (IsRepetition(event)) {
    const auto held = down_.find(identity);
    if (held != down_.end()) held->time = event.timestamp();
    if (form && (held == down_.end() || held->owner != form->form)) return true;
  } else {
    down_.insert(identity, {form ? form->form : QPointer<QWidget>(widget), key, event.timestamp(),
                            form && form->form->isVisible(), false});
  }
  lastReleased_ = 0;
  if (!form) return false;

  const QPointer<QWidget> target(widget);
  const bool wasVisible = form->form->isVisible();
  Run(form, target, wasVisible, form->formKeyDown, key);
  if (const auto handlers = key.swallowed ? nullptr : form->HandlersOf(widget)) {
    Run(form, target, wasVisible, handlers->keyDown, key);
    if (TypesSomething(key)) Run(form, target, wasVisible, handlers->keyPress, key);
  }
  // Outside a dialog Qt presses buttons with Space alone.
  auto* button = key.swallowed ? nullptr : qobject_cast<QPushButton*>(widget);
  if (button && key.Is(Qt::Key_Return, Qt::NoModifier) && !qobject_cast<QDialog*>(button->window())) {
    button->click();
    return true;
  }
  return key.swallowed;
}

bool KeyOrder::Release(QWidget* widget, QKeyEvent& event) {
  if (event.isAutoRepeat()) return false;
  const quint32 identity = KeyIdentity(event);
  if (!down_.contains(identity)) return false;
  Down held = down_.take(identity);
  const bool keyUpIsDue = !std::exchange(held.keyUpDone, true);
  held.time = event.timestamp();
  lastReleased_ = identity;
  lastRelease_ = held;
  const Form form = FormOf(widget);
  if (!form || held.owner != form->form || !keyUpIsDue || form->IsGone(held.wasVisible)) return false;

  const QPointer<QWidget> target(widget);
  Key key = held.key;
  Run(form, target, held.wasVisible, form->formKeyUp, key);
  if (const auto handlers = key.swallowed ? nullptr : form->HandlersOf(widget)) {
    Run(form, target, held.wasVisible, handlers->keyUp, key);
  }
  return key.swallowed;
}

/// Forgets the keys whose release no window of the program has seen.
void KeyOrder::ForgetReleased() {
  if (!IsDown) return;
  down_.removeIf([this](const QHash<quint32, Down>::iterator& held) {
    return (held.key() & ScanCodeMark) != 0 && !IsDown(held.key() & ~ScanCodeMark);
  });
}

void KeyOrder::FocusMoved(QWidget* now) {
  if (now) ForgetReleased();
  const Form form = FormOf(now);
  if (!form) return;
  QWidget* control = form->ControlOf(now);
  const QPointer<QWidget> before = std::exchange(form->focus, control);
  if (before && before != control) {
    if (const auto handlers = form->controls.value(before)) {
      for (std::size_t i = 0; i < handlers->lostFocus.size() && form->form; ++i) handlers->lostFocus[i]();
    }
    if (!form->form || form->focus != control || QApplication::focusWidget() != now) return;
  }
  if (reason_ == Qt::PopupFocusReason) return;
  if (reason_ == Qt::MenuBarFocusReason) return MenuLeft(now);
  RunGotFocus(form, control, before == control);
}

/// A menu that was left without a choice gives the user back to his control, which tells where he is; a command that
/// was chosen speaks for itself.
void KeyOrder::MenuLeft(QWidget* widget) {
  const Form form = FormOf(widget);
  const bool leftByKey = lastKey_ == Qt::Key_Escape || lastKey_ == Qt::Key_Alt || lastKey_ == Qt::Key_F10;
  if (form && leftByKey) RunGotFocus(form, form->ControlOf(widget), true);
}

void KeyOrder::RunGotFocus(const Form& form, QWidget* control, bool comingBack) {
  const auto handlers = form->controls.value(control);
  if (!handlers) return;
  const QPointer<QWidget> alive(control);
  for (std::size_t i = 0; i < handlers->gotFocus.size() && alive && form->form; ++i) {
    form->comingBack = comingBack;
    handlers->gotFocus[i]();
  }
  form->comingBack = false;
}

ControlEvents::ControlEvents(QWidget* form) : impl_(std::make_shared<Impl>()) {
  impl_->form = form;
  impl_->identity = form;
  KeyOrder::OfApplication().Add(impl_);
}

ControlEvents::~ControlEvents() {
  impl_->form.clear();
  if (qApp) KeyOrder::OfApplication().Remove(impl_->identity);
}

void ControlEvents::AskKeyboard(std::function<bool(quint32)> isDown) {
  KeyOrder::OfApplication().IsDown = std::move(isDown);
}

void ControlEvents::FormKeyDown(KeyHandler handler) {
  impl_->formKeyDown.push_back(std::move(handler));
}

void ControlEvents::FormKeyUp(KeyHandler handler) {
  impl_->formKeyUp.push_back(std::move(handler));
}

void ControlEvents::KeyDown(QWidget* control, KeyHandler handler) {
  impl_->Of(control, this).keyDown.push_back(std::move(handler));
}

void ControlEvents::KeyPress(QWidget* control, KeyHandler handler) {
  impl_->Of(control, this).keyPress.push_back(std::move(handler));
}

void ControlEvents::KeyUp(QWidget* control, KeyHandler handler) {
  impl_->Of(control, this).keyUp.push_back(std::move(handler));
}

void ControlEvents::GotFocus(QWidget* control, Handler handler) {
  impl_->Of(control, this).gotFocus.push_back(std::move(handler));
}

void ControlEvents::LostFocus(QWidget* control, Handler handler) {
  impl_->Of(control, this).lostFocus.push_back(std::move(handler));
}

bool ControlEvents::ComingBack() const {
  return impl_->comingBack;
}

void ControlEvents::ComeBack() {
  const auto alive = impl_;
  if (alive->focus) KeyOrder::RunGotFocus(alive, alive->focus, true);
}

}  // namespace talnik
