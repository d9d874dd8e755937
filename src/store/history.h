#pragma once
#include <QString>
#include <functional>
#include <optional>

#include "platform/journal.h"

// The history of the open table: its journal lies in the program folder, outlives a kill, and stays while the table is
// saved, compressed, replaced or its map is loaded anew. A program that ended in order leaves none.

// Where what is kept of a table has its place: a folder that need not be there. Its name tells the table's path.
QString History_Folder(const QString& table);
// The table was bound: its steps are those of before if it was left in one of their states.
void Follow_Table();
void Leave_Table();  // before it is closed, to be loaded again or not
void End_History();  // the map is closed: unless this program opens it again, its steps are over
// At the start of the program: those of programs that ended in order go, and what was left by programs that were killed
// and never taken up again: after 60 days, after 7 where all of it takes more than a gigabyte, the oldest first. Those
// of a program that runs stay.
void Clear_Histories();

// The table file is about to be replaced, and closed already. When a table is loaded again, the difference becomes one
// step of that name. What cannot be kept here leaves a history that begins anew then.
void Keep_Former_Table(const QString& step);
// Work that writes where table and map lie and nothing else: no step ahead is at stake.
void Write_Without_Step(const std::function<void()>& work);
void Drop_Steps_Ahead();  // what was taken back is not offered again

int Step_Count();               // since the journal began
int Step_Position();            // so many of them are in the table
JournalStep Step_At(int step);  // counted from 0; 0 <= step < Step_Count()
// The steps of a program that was killed were taken over when the table was loaded; asked once.
bool History_Was_Interrupted();
// Why steps were lost, in German, "" if none were; asked once.
QString Lost_History();

// Goes to the state after so many steps. The table is dirty then and its cursor stands on a row; whether the user's
// table has another name there, the result tells (context). Errors of Journal::Walk_To; the table is as it was.
WalkResult Go_To_Step(int position);

// A mark in the history: a state one can go back to as long as it is among its steps.
struct HistoryMark {
  QString journal;
  quint32 state = 0;
};
HistoryMark Mark_Here();  // also of a table that is closed for a moment
// Can a copy of the open table be brought back to it?
bool Is_Reached(const HistoryMark& mark);
// It can, and no more after going back to that step.
bool Lies_Behind(const HistoryMark& mark, int step);
// Brings back a copy of the open table. 3197 where it does not fit.
void Bring_Back(Database& copy, const HistoryMark& mark);
// Its place among the steps; nothing if it is none of them, or ahead.
std::optional<int> Place_Of(const HistoryMark& mark);
