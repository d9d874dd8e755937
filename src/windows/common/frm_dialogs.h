#pragma once
#include <QImage>
#include <QString>

class QDialog;
class QWidget;

// The dialog windows, one procedure each: shows the window, waits until it is closed (the help window does not wait)
// and has carried out what the user chose. `parent` is the main window.

void Show_frmMapNeu(QWidget* parent);      // an empty map
void Show_frmMapSize(QWidget* parent);     // millimetres and resolution of the open map
void Show_frmMalprg(QWidget* parent);      // the list of paint programs: add, remove, choose
void Show_frmMalprgOpen(QWidget* parent);  // starts a paint program with the map file
void Show_frmTipps(QWidget* parent);       // the tips one after the other
void Show_frmOptions(QWidget* parent);     // the settings of the program; waits
void Show_frmInfo(QWidget* parent);         // name, version and folders of the program
void Show_frmBildZoom(QWidget* parent);     // zoom factor of the map
void Show_frmMoveObjects(QWidget* parent);  // moves entries; stays open beside the map
void Show_frmFigur(QWidget* parent);        // kind and size of figures; stays open beside the map
void Show_frmFigurDraw(QWidget* parent);    // a free figure and its vertices; stays open too
void Show_frmEigenschaften(QWidget* parent);  // axes, foci and angle of the figure in hand; stays open too
void Show_dlgBMP(QWidget* parent);          // size of the picture in hand
// What of the clipboard shall come into the map: kind "Txt", "Img", or "" for nothing.
struct ClipboardChoice {
  QString kind, text;
  QImage picture;
};
// Asks what of the clipboard becomes an entry; waits.
ClipboardChoice Show_frmClipboard(QWidget* parent);
// Colours, fill and width of the entry in hand or the next one; they do not wait and follow the entry in hand.
enum class FarbFor { Entry, Frame, Waypoints };
// One window for all colours, turned to `what`.
void Show_frmFarb(QWidget* parent, FarbFor what = FarbFor::Entry);
void Show_frmFill(QWidget* parent);        // fill of areas and figures
void Show_frmDrawBreite(QWidget* parent);  // width of lines and outlines, in pixels
void Show_frmSpalteApp(QWidget* parent);  // a new column of the table
void Show_frmSpalteDel(QWidget* parent);  // removes one; does not wait: the user clicks on the head of the column
void Show_frmSpltHide(QWidget* parent);   // hides columns; does not wait either

// Font of the entry in hand or of the next text; stays open beside the map. While that entry is in hand the title is the
// caption. Show_frmSymbol: the same for symbols, with the table of characters.
void Show_frmSchrift(QWidget* parent, const QString& bookmark = {}, const QString& caption = {});
void Show_frmSymbol(QWidget* parent);

void Show_frmSql(QWidget* parent);          // the user's statements on the table
void Show_frmReplace(QWidget* parent);      // search and replace; stays open beside the map
void Show_frmPropTransfer(QWidget* parent);  // the look of an entry for others

// The window shown while no map is open; `parent` places it. Its timer runs while it is visible.
QWidget* Make_frmMapStart(QWidget* parent);

// A page of the built-in help, "index.htm" where none is named, with an anchor where one is ("options.htm#farben").
// One window for all pages; it can stay open beside a dialog.
void Show_Help(QWidget* parent, const QString& page = {});

// Connects dialogHooks with the windows, and the return from a paint program with the reloading of the map. Once, when
// the main window is made; Clear_Dialog_Hooks when it goes.
void Set_Dialog_Hooks(QWidget* mainWindow);
void Clear_Dialog_Hooks();

// What all dialogs have in common: F1 opens the page, no question mark in the title bar, the map stays visible behind.
void Prepare_Dialog(QDialog& dialog, const QString& helpPage);
