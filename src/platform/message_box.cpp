#include "platform/message_box.h"

#include <cstdio>
#include <new>
#include <utility>

MsgAnswer MsgResult = MsgAnswer::Ok;

namespace {
MsgHandler handler;

MsgAnswer Careful_Answer(MsgButtons buttons) {
  switch (buttons) {
    case MsgButtons::Ok:
      return MsgAnswer::Ok;
    case MsgButtons::YesNo:
      return MsgAnswer::No;
    case MsgButtons::YesNoAll:
      return MsgAnswer::NoAll;
    case MsgButtons::OkCancel:
    case MsgButtons::YesNoCancel:
      return MsgAnswer::Cancel;
  }
  return MsgAnswer::Cancel;
}

void Write_To_Terminal(const MsgRequest& request) {
  QString text = request.text;
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
  const QString title = request.title.trimmed();
  const QByteArray line = (title.isEmpty() ? text : title + QLatin1String(": ") + text).toUtf8();
  std::fprintf(stderr, "%s\n", line.constData());
}
}  // namespace

MsgHandler Set_Message_Handler(MsgHandler next) { return std::exchange(handler, std::move(next)); }

MsgAnswer Message_Box(const QString& text, MsgButtons buttons, MsgIcon icon, const QString& title,
                      MsgDefault defaultButton) {
  return Message_Box(MsgRequest{text, buttons, icon, title, defaultButton, {}, {}});
}

MsgAnswer Message_Box(const MsgRequest& request) {
  const MsgHandler shown = handler;  // a box may set another handler
  MsgAnswer answer = Careful_Answer(request.buttons);
  if (shown)
    answer = shown(request);
  else
    Write_To_Terminal(request);
  MsgResult = answer;
  return answer;
}

QString Error_Message(const Error& error, const QString& question) {
  return QStringLiteral("Error: %1 ").arg(error.number) + error.text + QLatin1String("\n\n") + question;
}

Step Guarded(const QString& title, const std::function<void()>& step) {
  Error error;
  try {
    step();
    return Step::Done;
  } catch (const Error& raised) {
    error = raised;
  } catch (const std::bad_alloc&) {
    error = Error{errors::outOfMemory, Error_Text(errors::outOfMemory)};
  }
  const QString shownTitle = title.isEmpty() ? QStringLiteral("Fehler") : title;
  const MsgAnswer answer = Message_Box(Error_Message(error), MsgButtons::YesNo, MsgIcon::Question, shownTitle);
  return answer == MsgAnswer::Yes ? Step::Stopped : Step::Skipped;
}
