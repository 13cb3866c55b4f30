// A laptop with a card, a stick, a mapping, an optical drive and a loop device, as lsblk writes it.
#pragma once

#include <string_view>

namespace norvo::test {

inline constexpr std::string_view laptop_lsblk = R"({
   "blockdevices": [
      {"path":"/dev/loop0", "kname":"loop0", "pkname":null, "maj:min":"7:0", "type":"loop",
       "size":67108864, "ro":true, "rm":false, "hotplug":false, "tran":null, "vendor":null,
       "model":null, "serial":null, "label":null, "fstype":"squashfs", "fsver":"4.0", "uuid":null,
       "pttype":null, "log-sec":512, "mountpoints":["/snap/core/1"]
      },{
       "path":"/dev/sda", "kname":"sda", "pkname":null, "maj:min":"8:0", "type":"disk",
       "size":512110190592, "ro":false, "rm":false, "hotplug":false, "tran":"sata",
       "vendor":"ATA     ", "model":"Fast Disk 512", "serial":"S1", "label":null, "fstype":null,
       "fsver":null, "uuid":null, "pttype":"gpt", "log-sec":512, "mountpoints":[null],
       "children":[
          {"path":"/dev/sda1", "kname":"sda1", "pkname":"sda", "maj:min":"8:1", "type":"part",
           "size":536870912, "ro":false, "rm":false, "hotplug":false, "tran":null, "vendor":null,
           "model":null, "serial":null, "label":"EFI", "fstype":"vfat", "fsver":"FAT32",
           "uuid":"A-B", "pttype":"gpt", "log-sec":512, "mountpoints":["/boot/efi"]
          },{
           "path":"/dev/sda2", "kname":"sda2", "pkname":"sda", "maj:min":"8:2", "type":"part",
           "size":511572246528, "ro":false, "rm":false, "hotplug":false, "tran":null,
           "vendor":null, "model":null, "serial":null, "label":null, "fstype":"crypto_LUKS",
           "fsver":"2", "uuid":"c", "pttype":"gpt", "log-sec":512, "mountpoints":[null],
           "children":[
              {"path":"/dev/mapper/root", "kname":"dm-0", "pkname":"sda2", "maj:min":"253:0",
               "type":"crypt", "size":511555469312, "ro":false, "rm":false, "hotplug":false,
               "tran":null, "vendor":null, "model":null, "serial":null, "label":"root",
               "fstype":"ext4", "fsver":"1.0", "uuid":"d", "pttype":null, "log-sec":512,
               "mountpoints":["/", "/srv/bound"]
              }
           ]
          }
       ]
      },{
       "path":"/dev/sdb", "kname":"sdb", "pkname":null, "maj:min":"8:16", "type":"disk",
       "size":16008609792, "ro":false, "rm":true, "hotplug":true, "tran":"usb",
       "vendor":"Generic ", "model":"Flash Disk      ", "serial":"S2", "label":null,
       "fstype":null, "fsver":null, "uuid":null, "pttype":"dos", "log-sec":512,
       "mountpoints":[null],
       "children":[
          {"path":"/dev/sdb1", "kname":"sdb1", "pkname":"sdb", "maj:min":"8:17", "type":"part",
           "size":16007561216, "ro":false, "rm":true, "hotplug":true, "tran":null, "vendor":null,
           "model":null, "serial":null, "label":"HOLIDAY", "fstype":"exfat", "fsver":"1.0",
           "uuid":"e", "pttype":"dos", "log-sec":512, "mountpoints":["/media/ann/HOLIDAY"]
          }
       ]
      },{
       "path":"/dev/sr0", "kname":"sr0", "pkname":null, "maj:min":"11:0", "type":"rom",
       "size":734003200, "ro":false, "rm":true, "hotplug":true, "tran":"sata",
       "vendor":"HL-DT-ST", "model":"DVD Drive", "serial":"S3", "label":"ALBUM",
       "fstype":"iso9660", "fsver":"Joliet Extension", "uuid":"f", "pttype":null, "log-sec":2048,
       "mountpoints":["/media/ann/ALBUM"]
      },{
       "path":"/dev/mmcblk0", "kname":"mmcblk0", "pkname":null, "maj:min":"179:0", "type":"disk",
       "size":31914983424, "ro":true, "rm":false, "hotplug":false, "tran":null, "vendor":null,
       "model":null, "serial":"S4", "label":null, "fstype":null, "fsver":null, "uuid":null,
       "pttype":"dos", "log-sec":512, "mountpoints":[null],
       "children":[
          {"path":"/dev/mmcblk0p1", "kname":"mmcblk0p1", "pkname":"mmcblk0", "maj:min":"179:1",
           "type":"part", "size":31910789120, "ro":true, "rm":false, "hotplug":false, "tran":null,
           "vendor":null, "model":null, "serial":null, "label":null, "fstype":"vfat",
           "fsver":"FAT16", "uuid":"9", "pttype":"dos", "log-sec":512,
           "mountpoints":["/media/ann/9"]
          }
       ]
      },{
       "path":"/dev/nvme0n1", "kname":"nvme0n1", "pkname":null, "maj:min":"259:0", "type":"disk",
       "size":1024209543168, "ro":false, "rm":false, "hotplug":false, "tran":"nvme",
       "vendor":null, "model":"Quick 1TB", "serial":"S5", "label":null, "fstype":null,
       "fsver":null, "uuid":null, "pttype":"gpt", "log-sec":512, "mountpoints":[null],
       "children":[
          {"path":"/dev/nvme0n1p1", "kname":"nvme0n1p1", "pkname":"nvme0n1", "maj:min":"259:1",
           "type":"part", "size":1024208494592, "ro":false, "rm":false, "hotplug":false,
           "tran":"nvme", "vendor":null, "model":null, "serial":null, "label":"swap",
           "fstype":"swap", "fsver":"1", "uuid":"0", "pttype":"gpt", "log-sec":512,
           "mountpoints":["[SWAP]"]
          },{
           "path":"/dev/nvme0n1p2", "kname":"nvme0n1p2", "pkname":"nvme0n1", "maj:min":"259:2",
           "type":"part", "size":1048576, "ro":false, "rm":false, "hotplug":false,
           "tran":"nvme", "vendor":null, "model":null, "serial":null, "label":"MEDIA",
           "fstype":"xfs", "fsver":null, "uuid":"g", "pttype":"gpt", "log-sec":512,
           "mountpoints":["/media/ann/MEDIA"]
          }
       ]
      }
   ]
})";

}  // namespace norvo::test
