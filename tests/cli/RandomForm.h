// Forms as a user may fill them in, with the options that ask the command for the same.
#pragma once

#include <QString>
#include <QStringList>

#include <random>
#include <string>
#include <utility>
#include <vector>

struct RandomForm {
    std::vector<std::pair<QString, QString>>
        entries;       // field and text, in the order in which they are entered
    QStringList ticks; // boxes, ticked after that

    std::vector<std::string> options;
    // Those that a log of this form needs beside it, because it does not tell which axis takes which length.
    std::vector<std::string> optionsBesideTheLog;
    // A scale stays in its field, and in the log, when a length takes its place; no option says so.
    bool hasScaleThatLosesToALength = false;
};

RandomForm randomForm(std::mt19937 &random);
