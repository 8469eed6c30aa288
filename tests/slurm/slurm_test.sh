#!/usr/bin/env bash
# usage: slurm_test.sh FLUMO EXAMPLES: renders a shot with EXAMPLES/slurm on a Slurm cluster of this one machine.
# One task is killed outright while it renders, another put back into the queue. Status 77: no cluster starts here.
set -euo pipefail
flumo=$1 examples=$2
dir=$(mktemp -d)
shot=$dir/shot
cluster=$dir/cluster
pids=()

finish() {
    local status=$?
    [ "$status" -eq 0 ] || [ "$status" -eq 77 ] || tail -n 20 "$cluster"/*.log "$shot"/logs/* >&2 || true
    scancel -u "$(id -un)" > "$dir/cancel.log" 2>&1 || true
    [ ${#pids[@]} -eq 0 ] || kill "${pids[@]}" 2> /dev/null || true
    wait
    rm -rf "$dir"
}
trap finish EXIT

say() { echo "slurm_test: $*" >&2; }
skip() { say "skipped: $*" && exit 77; }
fail() { say "$*" && exit 1; }

# until_true SECONDS COMMAND...
until_true() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.02
    done
}

start_cluster() {
    local host port user
    host=$(hostname -s) user=$(id -un) port=$((20000 + $$ % 30000))
    mkdir -p "$cluster/spool" "$cluster/state" "$cluster/munge"
    chmod 755 "$dir"
    chmod 711 "$cluster/munge"
    head -c 1024 /dev/urandom > "$cluster/munge/key"
    chmod 600 "$cluster/munge/key"
    munged --foreground --force --key-file="$cluster/munge/key" --socket="$cluster/munge/socket" --num-threads=2 \
        --pid-file="$cluster/munged.pid" --seed-file="$cluster/munge/seed" > "$cluster/munged.log" 2>&1 &
    pids+=($!)
    # A requeued job waits until its credential has expired: two minutes, were cred_expire not set.
    cat > "$cluster/slurm.conf" << TEXT
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
AuthType=auth/munge
CredType=cred/munge
AuthInfo=socket=$cluster/munge/socket,cred_expire=5
SlurmUser=$user
SlurmdUser=$user
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmctldPidFile=$cluster/slurmctld.pid
SlurmdPidFile=$cluster/slurmd.pid
StateSaveLocation=$cluster/state
SlurmdSpoolDir=$cluster/spool
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
MpiDefault=none
SwitchType=switch/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
ReturnToService=2
SchedulerParameters=sched_interval=1,batch_sched_delay=0
NodeName=$host NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=main Nodes=$host Default=YES MaxTime=60 State=UP
TEXT
    export SLURM_CONF=$cluster/slurm.conf
    until_true 10 test -S "$cluster/munge/socket" || skip "munged does not start: $(tail -n 1 "$cluster/munged.log")"
    slurmctld -D -c > "$cluster/slurmctld.log" 2>&1 &
    pids+=($!)
    slurmd -D -c > "$cluster/slurmd.log" 2>&1 &
    pids+=($!)
    until_true 30 is_idle || skip "no Slurm node becomes idle: $(tail -n 1 "$cluster/slurmd.log")"
}

is_idle() { sinfo -h -o %T 2> /dev/null | grep -q idle; }
is_done() { [ -z "$(squeue -h)" ]; }
frames_between() { find "$shot/frames" -name '0*.png' | awk -F/ -v a="$1" -v b="$2" '$NF+0 >= a && $NF+0 <= b' | wc -l; }
has_begun() { [ "$(frames_between "$1" "$2")" -ge 2 ]; }
renderer_of() { pgrep -f -- "--shard $1/4 .*$shot/"; }

for tool in munged slurmctld slurmd sbatch pgrep; do
    PATH=$PATH:/usr/sbin command -v "$tool" > /dev/null || skip "$tool is not installed (packages slurm-wlm and munge)"
done
export PATH=$PATH:/usr/sbin FLUMO=$flumo FPS=24
start_cluster

# Two chunks at a time at most, each long enough to be met in its midst.
sed 's/"size": *"[^"]*"/"size": "320x180"/' "$examples/loop.json" > "$dir/scene.json"
jobs=$("$examples/slurm/render-shot.sh" "$dir/scene.json" 1-64 4 "$shot")
echo "jobs: $jobs"
until_true 120 has_begun 1 16 || fail "the first chunk does not begin"
kill -KILL "$(renderer_of 1)"
first=$(stat -c %i-%y "$shot/frames/000001.png")
[ "$(frames_between 1 16)" -lt 16 ] || fail "killed too late to show anything"
until_true 120 has_begun 33 48 || fail "the third chunk does not begin"
scontrol requeue "${jobs% *}_3"
[ "$(frames_between 33 48)" -lt 16 ] || fail "requeued too late to show anything"
until_true 300 is_done || fail "the jobs do not end: $(squeue)"
cat "$shot"/logs/*

for chunk in 1 3; do
    grep -q 'restarts: 1' "$shot/logs/chunk-$chunk.txt" || fail "chunk $chunk was not begun again"
done
[ "$(stat -c %i-%y "$shot/frames/000001.png")" = "$first" ] || fail "a frame that was whole is rendered anew"
# The same chunks by hand.
mkdir "$dir/hand"
for range in 1-32 33-64; do
    "$flumo" render --scene "$dir/scene.json" --frames "$range" --quiet -o "$dir/hand/%06d.png" > "$dir/hand.log"
done
diff -r "$dir/hand" "$shot/frames"
said=$(ffprobe -v error -count_frames -show_entries stream=codec_name,width,height,r_frame_rate,nb_read_frames \
    -of compact=p=0:nk=1 "$shot/shot.mp4")
[ "$said" = "h264|320|180|24/1|64" ] || fail "the video is $said"
echo "video: $said"
