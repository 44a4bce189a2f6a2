# Sourced: the conditions of a measurement, for the pages that show its figures.
# shellcheck shell=bash

# Date, processor, memory and system, without the machine's name; the caller completes the sentence.
machine_conditions() {
    local processor memory system
    processor=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n 1)
    memory=$(awk '$1 == "MemTotal:" { printf "%.0f", $2 / 1048576 }' /proc/meminfo)
    # shellcheck source=/dev/null
    system=$(source /etc/os-release && echo "$PRETTY_NAME")
    echo "Measured on $(date +%F): ${processor:-unknown processor}, $(nproc) processors, $memory GiB of memory, $system"
}
