#include "platform/desktop/qt_open_panels.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>

#include "host/temporary_folder.h"
#include "platform/simulated/simulated_time.h"

namespace lunevra {
namespace {

class OpenPanelTest : public testing::Test {
 protected:
  bool eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(10000);
    while (!condition() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
      time_.drainMainQueue();
    }
    return condition();
  }
  /// What is answered to a panel on the folder; the keys count once it shows what is in there.
  std::string answerTo(const std::vector<Qt::Key>& keys) {
    std::optional<std::string> answer;
    panels_.chooseFolder({"title", "message", "prompt", folder_.path()},
                         [&](const auto& folder) { answer = folder.value_or("none"); });
    auto* const window = qobject_cast<QQuickWindow*>(QGuiApplication::allWindows().constLast());
    EXPECT_EQ(window->modality(), Qt::NonModal);
    for (const auto key : keys) {
      EXPECT_TRUE(eventually([&] {
        const auto* const list = window->findChild<QObject*>("folders");
        return list != nullptr && list->property("count").toInt() > 0;
      }));
      for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &event);
      }
    }
    EXPECT_TRUE(eventually([&] { return answer.has_value(); }));
    return answer.value_or("");
  }

  host_test::TemporaryFolder folder_;
  SimulatedTime time_;
  QtOpenPanels panels_{time_};
};

TEST_F(OpenPanelTest, AnswersWithTheFolderThatIsMarkedWhateverItIsCalled) {
  const std::string drive = folder_.path() / "100% #1 <b>Ü?";
  std::filesystem::create_directory(drive);
  EXPECT_EQ(answerTo({Qt::Key_Return}), folder_.path()) << "the place itself";
  EXPECT_EQ(answerTo({Qt::Key_Down, Qt::Key_Return}), drive);
  EXPECT_EQ(answerTo({Qt::Key_Down, Qt::Key_Escape}), "none");
}

}  // namespace
}  // namespace lunevra
