#!/usr/bin/env bash
# What the program's own sources must not hold, whatever they do with it: tst_SourceRules.sh source-folder
set -euo pipefail

cd "$1"
export LC_ALL=C
folders=(app widgets stl transform)

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# refuse what pattern: grep must have looked at everything and found nothing.
refuse() {
    local found status=0
    found=$(grep -rnE -- "$2" "${folders[@]}") || status=$?
    ((status == 1)) || fail "$1: ${found:-grep ended with $status}"
}

with_meta_object=$(grep -rlE '\bQ_(OBJECT|GADGET|NAMESPACE)' "${folders[@]}" | sort)
[[ $with_meta_object == "app/MeshvaneMainWindow.h
transform/MeshvaneLog.h
widgets/LineEditCustom.h" ]] || fail "other classes have a meta-object: $with_meta_object"

refuse "a thread or a lock" \
    'QThread|QtConcurrent|QRunnable|QMutex|QSemaphore|pthread|std::(j?thread|mutex|async|atomic|condition_variable)'
refuse "a timer" 'QTimer|QBasicTimer|startTimer|timerEvent'
refuse "settings" 'QSettings'
refuse "the environment" 'getenv|putenv|qEnvironmentVariable|QProcessEnvironment'
refuse "an option of the command line" 'QCommandLine|getopt'
