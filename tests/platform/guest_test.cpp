#include "platform/guest.h"
#include <QElapsedTimer>

namespace {

class GuestTest : public FolderTest {
 protected:
  GuestResult Run(const QString& script, int seconds = 20) {
    order = {u"/bin/sh"_s, {u"-c"_s, script, u"name"_s, u"a b; $(c) 'd'"_s}, folder.path(), seconds};
    return Run_Guest(order);
  }
  GuestOrder order;
};

}  // namespace

TEST_F(GuestTest, WorksInItsFolderAndSaysHowItEnded) {
  const GuestResult good = Run(u"echo \"$1\" > out; echo \"$LC_ALL $TMPDIR\"; pwd; cat; echo bad >&2"_s);
  EXPECT_EQ(good.end, GuestEnd::Done);
  EXPECT_EQ(good.output, "C.UTF-8 " + folder.path().toUtf8() + '\n' + folder.path().toUtf8() + '\n');
  EXPECT_EQ(good.faults, "bad\n");
  EXPECT_EQ(Read_Bytes(Path(u"out"_s)), "a b; $(c) 'd'\n") << "no shell takes the arguments apart";
  EXPECT_EQ(Guest_Flaw(order, good), QString());
  EXPECT_EQ(Run(u"echo kaputt >&2; exit 3"_s).exitCode, 3);
  EXPECT_TRUE(Guest_Flaw(order, Run(u"echo kaputt >&2; exit 3"_s)).contains(u"kaputt"));
  EXPECT_EQ(Run(u"kill -SEGV $$"_s).end, GuestEnd::Failed) << "a crash";
  EXPECT_LE(Run(u"yes | head -c 9000000"_s).output.size(), 1 << 20);
  order.program = Path(u"fehlt"_s);
  EXPECT_EQ(Run_Guest(order).end, GuestEnd::Missing);
}

TEST_F(GuestTest, IsEndedByTheTimeLimitAndByTheUser) {
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(Run(u"exec sleep 60"_s, 1).end, GuestEnd::TimedOut);
  EXPECT_TRUE(Guest_Flaw(order, {.end = GuestEnd::TimedOut}).contains(u"1 Sekunden"));
  {
    const StopWorkAt third(3);
    EXPECT_EQ(Run(u"exec sleep 60"_s).end, GuestEnd::Cancelled);
  }
  EXPECT_LT(clock.elapsed(), 20'000);
}
