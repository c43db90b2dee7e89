#include <QTest>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

#include "window_fixture.h"

namespace quillon::testing {

namespace {

constexpr const char* kChildDir = "QUILLON_JOURNAL_CHILD_DIR";

// Starts this test program again as a station that edits until it is killed;
// returns its pid once it reported its journal written, or -1.
pid_t startEditingStation(const std::string& dir) {
  int out[2];
  if (pipe(out) != 0) return -1;
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(out[1], STDOUT_FILENO);
    close(out[0]);
    setenv(kChildDir, dir.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    execl("/proc/self/exe", "test_scriptwin", "--gtest_filter=JournalCrash.ChildEditsUntilKilled", nullptr);
    _exit(127);
  }
  close(out[1]);
  std::string seen;
  char buf[256];
  ssize_t n;
  while (seen.find("journalled") == std::string::npos && (n = read(out[0], buf, sizeof buf)) > 0) seen.append(buf, n);
  close(out[0]);
  return seen.find("journalled") == std::string::npos ? -1 : pid;
}

}  // namespace

// The child's part: not a test of its own, skipped unless started by the one below.
TEST(JournalCrash, ChildEditsUntilKilled) {
  const char* dir = std::getenv(kChildDir);
  if (!dir) GTEST_SKIP() << "runs only as the station the crash test kills";
  WindowStation w(dir);
  w.window.setJournalInterval(50);
  w.window.newDocument();
  ScriptView& v = *w.window.activeView();
  v.show();
  QTest::keyClicks(&v, "Unsaved ");
  QTest::keyClick(&v, Qt::Key_I, Qt::ControlModifier);
  QTest::keyClicks(&v, "work");
  while (!std::filesystem::exists(w.window.journal().path())) QTest::qWait(20);
  std::printf("journalled\n");
  std::fflush(stdout);
  for (;;) QTest::qWait(50);
}

TEST(JournalCrash, KilledStationsWorkIsOfferedOnTheNextStart) {
  const std::string dir = tempDir("scriptwin_journal");
  const pid_t child = startEditingStation(dir);
  ASSERT_GT(child, 0);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));

  WindowStation next(dir);
  next.ui.answers = {Answer::Yes};
  ASSERT_TRUE(next.window.offerRecovery());
  EXPECT_EQ(next.ui.lastBox().text,
            u"Quillon did not close properly last time. Recover 1 script document(s) with unsaved changes?");
  ASSERT_EQ(next.st.doc->documentsCount(), 1);
  EXPECT_EQ(next.st.doc->content(), u"Unsaved work\r");
  EXPECT_EQ(next.st.doc->name(), u"Document1");
  EXPECT_TRUE(next.st.doc->italic({8, 12}));
  EXPECT_FALSE(next.st.doc->italic({0, 7}));
  EXPECT_TRUE(next.window.service().active()->modified);
  EXPECT_TRUE(editorInStep(*next.window.activeView()));
  // The dead station's journal is gone; the work is journalled anew here.
  EXPECT_TRUE(next.window.journal().orphans().empty());
  EXPECT_TRUE(std::filesystem::exists(next.window.journal().path()));

  // Saying No at a later start drops what is left, and a clean end leaves
  // no journal behind.
  next.ui.answers = {Answer::No};
  EXPECT_TRUE(next.window.closeAll());
  EXPECT_FALSE(std::filesystem::exists(next.window.journal().path()));
}

}  // namespace quillon::testing
