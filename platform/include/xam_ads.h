/*
 * The application-management service: here, the initial setting of the soft numeric keypad that the
 * application-management service applies when an application's screen opens.
 *
 * One facade, reached through xam_ads_facade::xam_ads_get_instance(); operations answer 0 or a 0xC201xxxx
 * failure code (0xC2010001 is the general failure).
 */
#ifndef XAM_ADS_H
#define XAM_ADS_H

#include "plat_types.h"

#define XAM_ADS_OK PLAT_CODE(0)
#define XAM_ADS_NG PLAT_CODE(0xC2010001)

/*
 * The keypad's initial setting. Display mode 1 shows the keypad when the screen opens, 0 does not; the layout
 * is the service's own numbering (0 default, 1 compact, 2 wide), which does not follow the panel's.
 */
typedef struct {
    dev_ulong display_mode;
    dev_ulong layout;
    dev_ulong x;
    dev_ulong y;
} XAM_ADS_SOFTWARE_TENKEY_SETTING;
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, layout, 4);
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, x, 8);
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, y, 12);
PLAT_ASSERT_SIZE(XAM_ADS_SOFTWARE_TENKEY_SETTING, 16);

#ifdef __cplusplus

class xam_ads_facade {
public:
    static xam_ads_facade* xam_ads_get_instance();

    /* Keeps `setting` as the keypad's initial setting for application `app_id`. */
    PLAT_RESULT xam_ads_request_software_tenkey_initial_setting(const char* app_id,
                                                                const XAM_ADS_SOFTWARE_TENKEY_SETTING& setting);

private:
    xam_ads_facade() = default;
};

#endif /* __cplusplus */

#endif /* XAM_ADS_H */
