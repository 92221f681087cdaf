#include "platform/desktop/qt_open_panels.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QUrl>

namespace lunevra {
namespace {

QString text(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

std::string userName() {
  const char* name = std::getenv("USER");
  return name != nullptr ? name : "";
}

}  // namespace

/// One window, and who waits for its answer. It answers exactly once.
class QtOpenPanels::Panel : public QObject {
  Q_OBJECT

 public:
  using Completion = std::function<void(std::optional<std::string>)>;

  Panel(RunLoop& runLoop, Completion completion)
      : runLoop_(runLoop), completion_(std::move(completion)) {}
  ~Panel() override { answer(std::nullopt); }
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  void show(QQmlEngine& engine, const FolderPanelRequest& request) {
    QQmlComponent component(&engine, QUrl("qrc:/lunevra/FolderPanel.qml"));
    const QVariantMap properties{
        {"title", text(request.title)},
        {"message", text(request.message)},
        {"prompt", text(request.prompt)},
        {"startFolder", QUrl::fromLocalFile(text(localFolder(request.startDirectory)))}};
    window_.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(properties)));
    if (window_ == nullptr) return answer(std::nullopt);  // a computer without the chooser's parts
    connect(window_.get(), SIGNAL(answered(QUrl)), this, SLOT(choose(QUrl)));
    connect(window_.get(), SIGNAL(cancelled()), this, SLOT(cancel()));
    if (auto* const here = QGuiApplication::screenAt(QCursor::pos())) window_->setScreen(here);
    window_->show();
    window_->requestActivate();
  }

 private slots:
  void choose(const QUrl& folder) { answer(folder.toLocalFile().toStdString()); }
  void cancel() { answer(std::nullopt); }

 private:
  void answer(std::optional<std::string> folder) {
    if (window_ != nullptr) window_->hide();
    if (auto completion = std::exchange(completion_, nullptr))
      runLoop_.async(
          [completion = std::move(completion), folder = std::move(folder)] { completion(folder); });
  }

  RunLoop& runLoop_;
  Completion completion_;
  std::unique_ptr<QQuickWindow> window_;
};

QtOpenPanels::QtOpenPanels(RunLoop& runLoop) : runLoop_(runLoop) {}
QtOpenPanels::~QtOpenPanels() = default;

void QtOpenPanels::chooseFolder(const FolderPanelRequest& request,
                                std::function<void(std::optional<std::string>)> completion) {
  cancel();
  if (engine_ == nullptr) engine_ = std::make_unique<QQmlEngine>();
  panel_ = std::make_unique<Panel>(runLoop_, std::move(completion));
  panel_->show(*engine_, request);
}

void QtOpenPanels::cancel() {
  panel_.reset();
}

std::string localFolder(const std::string& path) {
  if (path != "/Volumes") return path;
  for (const auto& folder : {"/media/" + userName(), "/run/media/" + userName()}) {
    std::error_code error;
    if (!folder.ends_with('/') && std::filesystem::is_directory(folder, error)) return folder;
  }
  return "/media";
}

}  // namespace lunevra

#include "qt_open_panels.moc"
