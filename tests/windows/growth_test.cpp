#include <ctime>

#include "edit/marks.h"

// The library tells of every object that is made and that goes; declared as its own tools declare it.
extern quintptr Q_DECL_IMPORT qtHookData[];

// What is done a thousand times a day leaves nothing behind.

constexpr int firstRounds = 9, many = 198, most = 990;  // all with the same kinds in hand at their end
constexpr double quickSeconds = 0.2;                    // of computing: a step that is through by then goes on
constexpr int added = 3, removed = 4;                   // places in qtHookData
static QSet<const QObject*> counted;

static QString Class_Of(const QObject& object) { return QLatin1String(object.metaObject()->className()); }

class Growth : public CommandTest {
 protected:
  void SetUp() override {
    CommandTest::SetUp();
    counted.clear();
    qtHookData[added] = reinterpret_cast<quintptr>(+[](QObject* made) { counted << made; });
    qtHookData[removed] = reinterpret_cast<quintptr>(+[](QObject* gone) { counted.remove(gone); });
  }
  void TearDown() override {
    qtHookData[added] = qtHookData[removed] = 0;
    CommandTest::TearDown();
  }
  static void Let_Go() {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }
  static QMap<QString, int> Objects() {
    Let_Go();
    QMap<QString, int> number;
    for (const QObject* object : counted)
      if (object->thread() == qApp->thread()) ++number[Class_Of(*object)];
    return number;
  }
  // What the first rounds make once and for all does not count. Of many rounds quick steps make as many as there is
  // time for, up to a thousand.
  void Expect_No_Growth(const QString& name, int rounds, const std::function<void()>& step) {
    for (int i = 0; i < firstRounds; ++i) step(), Let_Go();
    const auto before = Objects();
    const std::clock_t begun = std::clock();
    const auto quick = [begun] { return static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC < quickSeconds; };
    int made = 0;
    while (made < rounds || (rounds == many && made < most && (made % 18 != 0 || quick()))) step(), ++made;
    const auto after = Objects();
    for (auto it = after.begin(); it != after.end(); ++it)
      EXPECT_LE(*it, before.value(it.key())) << name << ": " << it.key() << " in " << made << " rounds";
  }
};

TEST_F(Growth, CommonStepsLeaveNoObjectBehind) {
  const QStringList names = {"Otter", "J", "Bild", "Bach", "Moor", "Haus", "Zaun", "Mass", "A-1"};
  QStringList keys;
  for (const QString& name : names) keys << Key_Of(name);
  int at = 0;
  const auto next = [&] { return keys[at++ % keys.size()]; };
  Expect_No_Growth("take an entry", many, [&] { Take_Entry(next()); });
  Expect_No_Growth("take an entry and put it back", many, [&] {
    Take_Entry(next());
    End_Entry();
  });
  Expect_No_Growth("type a text and forget it", many, [&] {
    New_Text(100, 20);
    Text_Typed("Uhu");
    Discard_Pending_Text();
  });
  Expect_No_Growth("mark", many, [&] {
    Map.CurBookmark = next();
    rsEntries->SetBookmark(Map.CurBookmark);
    Mark_Obj();
  });
  Expect_No_Growth("show the state", many, [] { events.StateChanged.Emit(); });
  Expect_No_Growth("the row in the table", many, [&] { Row_Changed(next().toLongLong()); });
  Drop_Hand();
  Expect_No_Growth("scroll", many, [&] { Scroll_By(at++ % 2 == 0 ? 30 : -30, 7); });
  Expect_No_Growth("zoom", many / 2, [&] { Set_Zoom(at++ % 2 == 0 ? 0.9 : 1.1); });
  Expect_No_Growth("table off and on", many / 4, [] { Toggle_Table(); });
  Expect_No_Growth("open the map again", 10, [this] { Open_User_Map(map); });
}

TEST_F(Growth, WindowsGoWhole) {
  for (const Command& command : Command_Table()) {
    if (command.procedure || command.key == "mnuFluraxFini" || command.key == "mnuTextNew") continue;
    QString inHand;
    for (const char* hand : {"", "Otter", "Bild", "Moor", "Haus"}) {
      inHand = QString::fromUtf8(hand);
      Begin_Again();
      if (!inHand.isEmpty()) Take_Entry(Key_Of(inHand));
      if (Run_Command(command.key, {1, {}})) break;
    }
    Close_Windows();
    Begin_Again();
    const QString key = inHand.isEmpty() ? QString() : Key_Of(inHand);
    Expect_No_Growth(command.key, 9, [&] {
      if (!key.isEmpty()) Take_Entry(key);
      Run_Command(command.key, {1, {}});
      Close_Windows();
      Drop_Hand();
    });
  }
}
