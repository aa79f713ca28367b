// Shows the cover of a track and the pictures of its folder, large, and follows the row of the
// console. The argument is the name of a cover; a blank in it is one of its letters.

#include "config/program_call.h"
#include "siblings/sleeveviewer/ui/run_viewer.h"

int main(int argc, char** argv)
{
    using namespace melovane;
    const QString name = QStringLiteral("SleeveViewer");
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const QString image = call.join(u' ').trimmed();
    if (image.startsWith(u'-')) {
        return refuseCall(name, image);
    }
    return runViewer(argc, argv, image);
}
