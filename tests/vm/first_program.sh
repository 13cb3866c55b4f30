#!/bin/busybox sh
# The first program in the virtual machine: makes the host's file system its own, as it is and
# without ever writing to it, and goes on there with what the kernel was told to run.
#
#   norvo.agent=PATH     the agent that takes the test's commands

b=/bin/busybox

give_up() {
  echo "norvo: $1"
  $b poweroff -f
}

$b mount -t proc proc /proc
$b mount -t sysfs sysfs /sys
$b mount -t devtmpfs dev /dev
# Some are for processors with more abilities; what is really missing shows below.
for module in /modules/*.ko; do
  $b insmod "$module" 2>/dev/null || echo "norvo: without ${module##*/}"
done

# What is written lies in memory, above the host's files.
$b mount -t 9p -o trans=virtio,version=9p2000.L,msize=262144,cache=loose,ro host /host ||
  give_up "the host's files cannot be mounted"
$b mount -t tmpfs written /written
$b mkdir /written/files /written/work
$b mount -t overlay -o lowerdir=/host,upperdir=/written/files,workdir=/written/work root /root ||
  give_up "nothing can be laid over the host's files"

for place in proc sys dev; do
  $b mkdir -p /root/$place
  $b mount --move /$place /root/$place
done
$b mkdir -p /root/dev/pts /root/dev/shm /root/run /root/tmp
$b mount -t devpts devpts /root/dev/pts
$b mount -t tmpfs -o mode=1777 shm /root/dev/shm
$b mount -t tmpfs -o mode=755 run /root/run
# The host's temporary files are not this machine's, but the program that is tested may lie there.
$b rm -rf /root/tmp/.X11-unix /root/tmp/.X*-lock
$b mkdir -p /root/run/exchange
$b mount -t 9p -o trans=virtio,version=9p2000.L,msize=262144,cache=none exchange \
  /root/run/exchange || give_up "the folder for exchange cannot be mounted"

agent=$($b sed -n 's/.*norvo\.agent=\([^ ]*\).*/\1/p' /root/proc/cmdline)
exec $b switch_root /root /bin/sh "$agent"
