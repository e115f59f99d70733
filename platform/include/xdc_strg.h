/*
 * The platform's storage library: files and directories inside the storage areas of the device's media.
 *
 * Paths are relative to the root of a storage area, named by its area id. Every function returns one of the
 * XDC_STRG_R_* codes. File and directory handles are the library's own 32-bit values; 0 is never a valid
 * handle.
 */
#ifndef XDC_STRG_H
#define XDC_STRG_H

#include "plat_types.h"

/* Result codes of the storage library. */
enum {
    XDC_STRG_R_OK = 0,
    XDC_STRG_R_EOF = 1,            /* end of file, or no further directory entry */
    XDC_STRG_R_NOT_FOUND = 2,      /* no such file, directory or handle */
    XDC_STRG_R_EXISTS = 3,         /* the target exists already */
    XDC_STRG_R_NO_SPACE = 4,       /* the medium is full */
    XDC_STRG_R_PARAM = 5,          /* an argument is not valid (unknown area, mode or origin) */
    XDC_STRG_R_ACCESS = 6          /* not permitted (read-only file or area, medium not mounted) */
};

/* Open modes. */
enum {
    XDC_STRG_MODE_READ = 1,        /* read an existing file */
    XDC_STRG_MODE_WRITE = 2,       /* create or truncate, write */
    XDC_STRG_MODE_APPEND = 3,      /* create if missing, write at the end */
    XDC_STRG_MODE_READ_PLUS = 4,   /* read and write an existing file */
    XDC_STRG_MODE_WRITE_PLUS = 5   /* create or truncate, read and write */
};

/* Seek origins. */
enum { XDC_STRG_SEEK_CUR = 0, XDC_STRG_SEEK_SET = 1, XDC_STRG_SEEK_END = 2 };

/* Attribute bits. */
enum { XDC_STRG_ATTR_ARCHIVE = 0x01, XDC_STRG_ATTR_HIDDEN = 0x02, XDC_STRG_ATTR_READONLY = 0x04 };

/* File status: the type bits of `mode` follow the POSIX values (0x8000 regular file, 0x4000 directory). */
typedef struct {
    dev_ulong mode;
    dev_ulong size;      /* bytes */
    dev_ulong mtime;     /* seconds since 1970-01-01 00:00:00 UTC */
} XDC_STRG_STAT;
PLAT_ASSERT_SIZE(XDC_STRG_STAT, 12);

/* File-system statistics of an area's medium. */
typedef struct {
    dev_ulong block_size;  /* bytes per block */
    dev_ulong blocks;      /* total blocks */
    dev_ulong free;        /* free blocks */
    dev_ulong available;   /* blocks available to applications */
} XDC_STRG_STATFS;
PLAT_ASSERT_SIZE(XDC_STRG_STATFS, 16);

/* Longest name that xdc_strg_readdir returns, without its terminating zero. */
#define XDC_STRG_NAME_MAX 255
/* Longest path that xdc_strg_get_area_path returns, without its terminating zero. */
#define XDC_STRG_PATH_MAX 1023

#ifdef __cplusplus
extern "C" {
#endif

int xdc_strg_init(void);

int xdc_strg_fopen(int area_id, const char* path, int mode, dev_ulong* handle);
int xdc_strg_fclose(dev_ulong handle);
int xdc_strg_fread(signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong* done);
int xdc_strg_fwrite(const signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong* done);
int xdc_strg_fseek(dev_ulong handle, dev_long offset, int origin);
int xdc_strg_ftell(dev_ulong handle, dev_long* position);
int xdc_strg_fflush_fsync(dev_ulong handle);
int xdc_strg_sync(void);

int xdc_strg_opendir(int area_id, const char* path, dev_ulong* handle);
/* The next entry's name into `name` (capacity `size`, always terminated); XDC_STRG_R_EOF after the last. */
int xdc_strg_readdir(dev_ulong handle, char* name, dev_ulong size);
int xdc_strg_closedir(dev_ulong handle);

int xdc_strg_mkdir(int area_id, const char* path);
int xdc_strg_remove(int area_id, const char* path);
int xdc_strg_rename(int area_id, const char* from, const char* to);
int xdc_strg_move(int area_id, const char* path, int area_id2, const char* path2);
/* XDC_STRG_R_OK when the path exists, XDC_STRG_R_NOT_FOUND when not. */
int xdc_strg_exist(int area_id, const char* path);
int xdc_strg_stat(int area_id, const char* path, XDC_STRG_STAT* status);
int xdc_strg_set_attribute(int area_id, const char* path, unsigned char attributes);
int xdc_strg_get_attribute(int area_id, const char* path, unsigned char* attributes);
int xdc_strg_statfs(int area_id, XDC_STRG_STATFS* status);
int xdc_strg_verify_area_mount(int area_id);
int xdc_strg_remove_disk(int disk_id);
/* The area's root path into `path` (capacity `size`, always terminated). */
int xdc_strg_get_area_path(int area_id, char* path, dev_ulong size);

#ifdef __cplusplus
}
#endif

#endif /* XDC_STRG_H */
