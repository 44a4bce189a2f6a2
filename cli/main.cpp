// Runs and questions from the command line. The locale stays "C": nothing here sets one.

#include "cli/Command.h"
#include "cli/PrivateFolder.h"

int main(int argc, char **argv)
{
    removePrivateFoldersAtTheEnd();
    return meshvaneCommand({argv + (argc > 0 ? 1 : 0), argv + argc});
}
