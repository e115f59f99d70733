// File access for Java applications inside the storage areas of the device's media.
#ifndef JBRG_STORAGE_XDOF_STRG_STORAGEIO_H
#define JBRG_STORAGE_XDOF_STRG_STORAGEIO_H

namespace orvane {

class xdof_strg_storageio {
public:
    virtual ~xdof_strg_storageio();

    // Initialises the storage library: 0 on success, -1 otherwise.
    static int init();
};

}  // namespace orvane

#endif  // JBRG_STORAGE_XDOF_STRG_STORAGEIO_H
