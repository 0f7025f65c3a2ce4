// varden.exe: FileMaker's script engine for a plug-in, on the command line.
#include "Options.h"
#include "Session.h"
#include "Text.h"
#include "TextIo.h"

using namespace standin::console;

namespace {

int RunSession(const Options& options) {
    Session session(options);
    int status = kWrong;
    try {
        status = session.Run();
    } catch (const Mistake& mistake) {
        TellLine(mistake.Reason());
    }
    session.Close();
    return status;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    PrepareStandardStreams();
    try {
        const Options options = ParseOptions({arguments + 1, arguments + count});
        if (options.help) {
            ShowLine(kUsage);
            return 0;
        }
        return RunSession(options);
    } catch (const Mistake& mistake) {
        TellLine(L"varden: " + mistake.Reason() + L" (--help tells the options)");
    } catch (const std::exception& error) {
        TellLine(L"varden: " + FromUtf8(error.what()).value_or(L"?"));
    }
    return kWrong;
}
