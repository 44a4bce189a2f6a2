#!/usr/bin/env bash
# Runs the Slurm example of docs/many-files.md on a cluster of this machine alone, which it starts as ordinary
# processes with all their files in a temporary folder: tst_Slurm.sh page program folder-of-meshes
# Needs Debian's slurm-wlm.
set -euo pipefail

# shellcheck source=tests/cli/many-files.sh
source "$(dirname "${BASH_SOURCE[0]}")/many-files.sh"

PATH+=:/usr/sbin:/sbin
for command in munged slurmctld slurmd sbatch; do
    command -v "$command" >/dev/null || fail "$command is not installed"
done

processes=()
finish() {
    local index
    for ((index = ${#processes[@]} - 1; index >= 0; --index)); do
        kill "${processes[index]}" 2>/dev/null || true
        wait "${processes[index]}" 2>/dev/null || true
    done
    rm -rf "$folder"
}
trap finish EXIT

# start name command...: in the background, with its messages in a file of that name.
start() {
    local name=$1
    shift
    "$@" >"$cluster/$name.log" 2>&1 </dev/null &
    processes+=($!)
}

# within seconds command...: repeats the command until it succeeds.
within() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || fail "not in time: $*; the cluster says: $(tail -n 20 "$cluster"/*.log)"
        sleep 0.2
    done
}

node_is_idle() { [[ $(sinfo --noheader --format=%T 2>/dev/null) == idle ]]; }

# The users of the keys and sockets may enter, and nobody else read.
cluster=$folder/cluster
chmod 711 "$folder"
mkdir --mode=711 "$cluster"
mkdir "$cluster/state" "$cluster/spool"
head -c 128 /dev/urandom >"$cluster/key"
chmod 600 "$cluster/key"
host=$(hostname -s)
port=$((20000 + RANDOM % 10000))
cat >"$cluster/slurm.conf" <<END
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$cluster/munge
CredType=cred/munge
StateSaveLocation=$cluster/state
SlurmdSpoolDir=$cluster/spool
SlurmctldPidFile=$cluster/slurmctld.pid
SlurmdPidFile=$cluster/slurmd.pid
SlurmdParameters=config_overrides
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU_Memory
SchedulerParameters=bf_interval=1,sched_interval=1
NodeName=$host NodeAddr=127.0.0.1 CPUs=2 RealMemory=2000
PartitionName=all Nodes=$host Default=YES State=UP
END
export SLURM_CONF=$cluster/slurm.conf

start munged munged --foreground --key-file="$cluster/key" --socket="$cluster/munge" --pid-file="$cluster/munge.pid" \
    --seed-file="$cluster/seed" --log-file="$cluster/munge.log"
within 20 test -S "$cluster/munge"
start slurmctld slurmctld -D
start slurmd slurmd -D
within 60 node_is_idle

begin
example slurm >meshvane.sbatch
sbatch --test-only --array=1-3 meshvane.sbatch || fail "the scheduler does not accept the job"
[[ -z $(ls -A out) ]] || fail "a job that was only tested has been run"

export SBATCH_WAIT=1 # or the submission would not wait for the tasks
bash -c "$(example slurm-submit)" || fail "a task fails: $(cat slurm-*.out)"
as_expected --z-origin-to-zero
[[ $(find . -name 'slurm-*.out' | wc -l) == 3 ]] || fail "there are not three tasks: $(ls)"

printf '\200%.0s' {1..300} >in/gear.stl
bash -c "$(example slurm-submit)" && fail "the failure of a task is hidden"
grep -q 'in/gear.stl: ' slurm-*.out || fail "nobody says which file failed: $(cat slurm-*.out)"

echo passed
