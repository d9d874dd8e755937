#include "maps/note_pads.h"

using NotePadTest = FluraxTest;

TEST_F(NotePadTest, SlotsAreUsedAgainAndMapTakesNone) {
  EXPECT_EQ(New_NotePad("a.txt"), 0);
  EXPECT_EQ(New_NotePad("b.txt"), 1);
  EXPECT_EQ(New_NotePad("MAP"), -1);
  ASSERT_EQ(NotePads.size(), 2);
  Set_NotePad_Changed(0, true);
  Free_NotePad(0);
  EXPECT_EQ(NotePad_Of("a.txt"), -1);
  EXPECT_EQ(New_NotePad("c.txt"), 0) << "the first free slot";
  EXPECT_FALSE(NotePad_Changed(0)) << "what the slot held before is forgotten";
  EXPECT_EQ(New_NotePad({}), 2);
  EXPECT_EQ(NotePads, QStringList({"c.txt", "b.txt", ""}));
  EXPECT_EQ(NotePad_Title(2), "Notiz 3");
}

// What was read and not touched is written back byte for byte.
TEST_F(NotePadTest, TextsRoundTrip) {
  for (const char* bytes : {"", "eine Zeile", "a\r\nb\r\n", "\r\n\r\nleer\r\n\r\n", "\xC4pfel \x80 5\r\nund \x96"}) {
    const QString path = Path("Notiz.txt");
    Replace_File(path, bytes);
    QString text;
    ASSERT_TRUE(Read_NotePad(path, text)) << bytes;
    EXPECT_FALSE(text.contains(u'\r'));
    ASSERT_TRUE(Save_NotePad(New_NotePad(path), text));
    EXPECT_EQ(Read_Bytes(path), QByteArray(bytes));
  }
  EXPECT_EQ(Menu("mnuRecentFile", 1).Tag, Path("Notiz.txt"));
}

TEST_F(NotePadTest, WhatCannotBeReadIsTold) {
  const MessageScript messages{{"kann nicht geöffnet werden"}, {"kein Text"}};
  QString text = QStringLiteral("bleibt");
  EXPECT_FALSE(Read_NotePad(Path("fehlt.txt"), text));
  Replace_File(Path("Bild.txt"), QByteArray("BM\0\0\0", 5));
  EXPECT_FALSE(Read_NotePad(Path("Bild.txt"), text));
  EXPECT_EQ(text, "bleibt");
}

// Yes, no and cancel; a full disk and letters the file cannot hold must not lose the text.
TEST_F(NotePadTest, ClosingAChangedTextAsks) {
  const QString path = Path("Notiz.txt");
  Replace_File(path, "alt");
  MessageScript messages;
  const int slot = New_NotePad(path);
  EXPECT_TRUE(Close_NotePad(slot, "alt")) << "unchanged: no question";
  ASSERT_EQ(New_NotePad(path), slot);
  Set_NotePad_Changed(slot, true);
  const QString question = QStringLiteral("Der Text in [") + path + QStringLiteral("] wurde geändert.");
  messages.Expect(question, MsgAnswer::Cancel);
  EXPECT_FALSE(Close_NotePad(slot, "neu"));
  messages.Expect("Möchten Sie die Änderungen speichern?", MsgAnswer::Yes).Expect("kann nicht gespeichert werden");
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  EXPECT_FALSE(Close_NotePad(slot, "neu")) << "it stays open";
  File_Write_Fault = nullptr;
  EXPECT_TRUE(NotePad_Changed(slot));
  messages.Expect(question, MsgAnswer::Yes).Expect("Fragezeichen", MsgAnswer::No);
  EXPECT_FALSE(Close_NotePad(slot, QString::fromUtf8("α")));
  EXPECT_EQ(Read_Bytes(path), QByteArray("alt"));
  messages.Expect(question, MsgAnswer::Yes);
  EXPECT_TRUE(Close_NotePad(slot, "neu"));
  EXPECT_EQ(Read_Bytes(path), QByteArray("neu"));
  EXPECT_FALSE(Is_Open_NotePad(slot));
}

TEST_F(NotePadTest, ANewTextAsksForItsNameAndTwoWindowsNeverShareAFile) {
  FileDialogScript files;
  MessageScript messages;
  const int first = New_NotePad({}), second = New_NotePad({});
  Set_NotePad_Changed(first, true);
  files.Answer(std::nullopt).Answer(Path("Eins.txt")).Answer(Path("Eins.txt"));
  EXPECT_FALSE(Save_NotePad(first, "eins"));
  EXPECT_TRUE(NotePad_Changed(first));
  EXPECT_TRUE(Save_NotePad(first, "eins"));
  EXPECT_EQ(NotePads[first], Path("Eins.txt"));
  messages.Expect("in einem anderen Notizfenster");
  EXPECT_FALSE(Save_NotePad_As(second, "zwei"));
  EXPECT_EQ(Read_Bytes(Path("Eins.txt")), QByteArray("eins"));
}

TEST_F(NotePadTest, TheSearchGoesForwardAndIgnoresCase) {
  const QString text = QStringLiteral("Enzian, ÄHRE, enzian");
  const std::tuple<const char*, int, int> cases[] = {{"enzian", 0, 0}, {"enzian", 6, 14}, {"ENZIAN", 20, -1},
                                                     {"ähre", 8, 8},   {"ähre", 99, -1},  {"fehlt", 0, -1},
                                                     {"", 0, -1}};
  for (const auto& [part, from, at] : cases) EXPECT_EQ(Find_Text(text, part, from), at) << part << from;
}
