// The main program of tests whose windows nobody has to see. What the toolkit warns of, a view that
// fails to bind above all, fails the test that is running.
#include <gtest/gtest.h>

#include <QtGui/qguiapplication.h>
#include <QtQuick/qquickwindow.h>

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg || text.contains("XDG_RUNTIME_DIR")) return;
  ADD_FAILURE() << text.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  qInstallMessageHandler(failOnWarning);
  return RUN_ALL_TESTS();
}
