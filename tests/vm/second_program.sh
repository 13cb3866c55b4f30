#!/bin/sh
# The second program in the virtual machine, on the host's file system: what a system does before
# people come. Then it serves the commands of the test, and switches the machine off after the last.
export PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8

hostname norvo-machine
ln -sf /proc/mounts /etc/mtab

# Names of volumes come from udev's database.
/lib/systemd/systemd-udevd --daemon
udevadm trigger --action=add --subsystem-match=block
udevadm settle --timeout=20

/usr/bin/python3 "${0%/*}/agent.py"
sync
echo o > /proc/sysrq-trigger
while :; do sleep 1; done
