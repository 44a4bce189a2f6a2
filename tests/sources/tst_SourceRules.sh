#!/usr/bin/env bash
# What the program's own sources must not contain: tst_SourceRules.sh source-folder
set -euo pipefail

cd "$1"
export LC_ALL=C
folders=(app widgets stl transform)

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# refuse what pattern: grep must read every file and find nothing.
refuse() {
    local found status=0
    found=$(grep -rnE -- "$2" "${folders[@]}") || status=$?
    ((status == 1)) || fail "$1: ${found:-grep exited with status $status}"
}

with_meta_object=$(grep -rlE '\bQ_(OBJECT|GADGET|NAMESPACE)' "${folders[@]}" | sort)
[[ $with_meta_object == "app/MeshvaneMainWindow.h
transform/MeshvaneLog.h
widgets/LineEditCustom.h" ]] || fail "classes with a meta-object: $with_meta_object"

refuse "threads or locks" \
    'QThread|QtConcurrent|QRunnable|QMutex|QSemaphore|pthread|std::(j?thread|mutex|async|atomic|condition_variable)'
refuse "timers" 'QTimer|QBasicTimer|startTimer|timerEvent'
refuse "settings" 'QSettings'
refuse "environment variables" 'getenv|putenv|qEnvironmentVariable|QProcessEnvironment'
refuse "command-line options" 'QCommandLine|getopt'
