// The Java applications' way to build and run device jobs: copy, scan, send, print and box jobs.
//
// A stateless class: each operation takes the platform's job service, makes one call on it (two for the
// operations that act on a user job id, which first look up its service id), folds the platform's result
// code into the job module's own result code (convert_retcode) and returns it. All job state (job
// information sets, services, user jobs) lives in the platform.
//
// Identifiers (unsigned int): handler id (one job information set), service id (a service built from a set
// by create_job), user job id (the running job, from start), address id (one destination of a set). A
// certificate id (the device's unsigned long) names the login on whose behalf a job is made or cancelled.
//
// Result codes: 0 success, 1 any platform code the module does not know, 2 to 23 as convert_retcode gives
// them; 8 also for a function type other than copy or scan.
#ifndef JBRG_JOB_QSF_FND_JOB_PROXY_H
#define JBRG_JOB_QSF_FND_JOB_PROXY_H

#include <jni.h>

#include <string>
#include <vector>

#include "plat_types.h"
#include "xsi_ais_job.h"

namespace orvane {

// The text fields whose usable length get_char_array_size answers.
enum QSF_FND_JOB_CHAR_ARRAY_SIZE_KEY : int {
    QSF_FND_JOB_FTP_HOST_NAME = 0,
    QSF_FND_JOB_FTP_PATH_NAME = 1,
    QSF_FND_JOB_FTP_USER_NAME = 2,
    QSF_FND_JOB_FTP_PASSWORD = 3,
    QSF_FND_JOB_SMB_HOST_NAME = 4,
    QSF_FND_JOB_SMB_PATH_NAME = 5,
    QSF_FND_JOB_SMB_USER_NAME = 6,
    QSF_FND_JOB_SMB_PASSWORD = 7,
    QSF_FND_JOB_MAIL_ADDRESS = 8
};

// The function whose defaults or signage mode are set; only these two are valid.
enum XIOF_SLO_JOB_FUNC_TYPE : int { XIOF_SLO_JOB_FUNC_TYPE_COPY = 1, XIOF_SLO_JOB_FUNC_TYPE_SCAN = 2 };

// Signage mode of a function; any value but ON and EXCLUSIVE reaches the platform as off.
enum XIOF_SLO_JOB_SIGNAGE_MODE : int {
    XIOF_SLO_JOB_SIGNAGE_MODE_OFF = 1,
    XIOF_SLO_JOB_SIGNAGE_MODE_ON = 2,
    XIOF_SLO_JOB_SIGNAGE_MODE_EXCLUSIVE = 3
};

class qsf_fnd_job_proxy {
public:
    qsf_fnd_job_proxy();
    virtual ~qsf_fnd_job_proxy();

    // ---- Job information sets
    int generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id);
    // For a job made on behalf of the logged-in user `cert_id`.
    int generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id, dev_ulong cert_id);
    int set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int value);
    int set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, std::string value);
    int set_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id, unsigned int value_1,
                  unsigned int value_2, unsigned int value_3);
    int get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int& value);
    // The text; empty when the platform fails (its code is not reported).
    std::string get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id);
    int get_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id, unsigned int& value_1,
                  unsigned int& value_2, unsigned int& value_3);
    int get_default_jobinfo_val(XSI_AIS_JOB_SETTING key, unsigned int& value);
    int reset_jobinfo(unsigned int handler_id);
    int commit_jobinfo(unsigned int handler_id);
    int rollback_jobinfo(unsigned int handler_id);
    int copy_jobinfo(unsigned int handler_id);
    int delete_jobinfo(unsigned int handler_id);
    int basic_func_set_value(XIOF_SLO_JOB_FUNC_TYPE func_type, XSI_AIS_JOB_SETTING data_id, unsigned int value);
    int set_signage_mode(XIOF_SLO_JOB_FUNC_TYPE func_type, XIOF_SLO_JOB_SIGNAGE_MODE mode);
    int notify_reset_default_value();

    // ---- Destinations of a set
    int add_send_address(unsigned int handler_id, unsigned int& address_id, const XSI_AIS_JOB_SEND_INFO& info);
    int update_send_address(unsigned int handler_id, unsigned int address_id, const XSI_AIS_JOB_SEND_INFO& info);
    int delete_send_address(unsigned int handler_id, unsigned int address_id);
    int delete_all_send_address(unsigned int handler_id);
    int get_send_address(unsigned int handler_id, unsigned int address_id, XSI_AIS_JOB_SEND_INFO& info);
    int get_send_address_id(unsigned int handler_id, std::vector<unsigned int>& ids);

    // ---- Creating, starting and ending jobs
    int create_job(XSI_AIS_JOB_CATEGORY category, unsigned int handler_id, unsigned int& service_id);
    int start(unsigned int service_id, unsigned int& user_job_id);
    int cancel(unsigned int user_job_id);
    int cancel(unsigned int user_job_id, dev_ulong cert_id);
    int remove_job(unsigned int user_job_id, dev_ulong cert_id);
    int continuous_read(unsigned int user_job_id);
    int continuous_read_end(unsigned int user_job_id);
    int get_service_id(unsigned int user_job_id, unsigned int& service_id);
    int get_job_list(XSI_AIS_JOB_KIND kind, std::vector<unsigned int>& ids);

    // ---- Prohibition state and panel messages
    int check_state_of_prohibition();
    int set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION state);
    int get_start_phb(unsigned int handler_id, bool& prohibited);
    int get_disable_info(unsigned int handler_id, XSI_AIS_PHB_DISABLE_ITEM item, unsigned short& value);
    int get_main_message(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& msg);

    // ---- Documents and data streams
    int box_job_prepare(unsigned int handler_id, XSI_AIS_BOX_JOB_INIT_SETTING& setting);
    int direct_print_prepare(unsigned int handler_id, char* file_path, char* file_name);
    int direct_print_prepare(unsigned int handler_id, XSI_AIS_JOB_STREAM_WRITE_FILE file_format);
    // One chunk of a stream job's data; the caller keeps chunks at or below XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE.
    int write_stream_data(unsigned int user_job_id, dev_ulong data_size, signed char* data,
                          XSI_AIS_JOB_STREAM_STATE state);
    int retrieve_document_prepare(unsigned int handler_id, char* box_pass, dev_ulong box_id, dev_ulong doc_id,
                                  char* store_path);
    int combine_document(unsigned int handler_id, XSI_AIS_PHB_COMBINE_DOC_INFO& info);
    // The next chunk of scan data as a Java byte array (a local reference of the calling thread), null on
    // any failure; `data` keeps the chunk and its doc_state.
    jbyteArray get_scan_data(unsigned int user_job_id, XSI_AIS_JOB_GET_SCAN_DATA& data);
    // The next OCR text line as a Java byte array, page records skipped; null on any failure. `data` keeps
    // the line's record.
    jbyteArray get_ocr_text_data(unsigned int handler_id, XSI_AIS_JOB_GET_OCR_DATA& data);
    // The usable length of a send-address text field; 0 for a key it does not know.
    int get_char_array_size(QSF_FND_JOB_CHAR_ARRAY_SIZE_KEY key);

    // The job module's result code of a platform code (traced as "code = <name>").
    int convert_retcode(dev_long code);
};

}  // namespace orvane

#endif  // JBRG_JOB_QSF_FND_JOB_PROXY_H
