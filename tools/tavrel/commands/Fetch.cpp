#include "../Files.h"
#include "../Installation.h"
#include "Commands.h"

namespace tavrel {

int RunFetch(Context& context) {
    const OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    std::vector<unsigned char> bytes;
    opened.scenario->fetch(bytes);
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (context.arguments.Has("--output"))
        SaveFile(context.arguments.Text("--output"), text);
    else
        context.out.Print(text);
    return context.status;
}

int RunUri(Context& context) {
    Installation installation(context);
    context.out.Print("{}\n", installation.Driver().getURI());
    return context.status;
}

} // namespace tavrel
