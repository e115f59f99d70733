// The native side of the wrapper probe modules: records with every kind of field and a class with every
// kind of argument and result, used only by the tests of the generated wrapper layer. Each method writes
// its name and arguments into a log, so that a test sees whether, and how, the native side was reached.
#ifndef JBRG_TESTS_WRAPPER_PROBE_H
#define JBRG_TESTS_WRAPPER_PROBE_H

#include <jni.h>

#include <string>
#include <vector>

#include "plat_types.h"

typedef unsigned int PROBE_ID;

enum PROBE_MODE { PROBE_MODE_OFF, PROBE_MODE_ON = 3, PROBE_MODE_AUTO };

struct PROBE_INNER {
    int value;
    char label[8];
};

struct PROBE_RECORD {
    int i;
    dev_long l;
    unsigned int ui;
    dev_ulong ul;
    unsigned short us;
    unsigned char uc;
    signed char sc;
    short s;
    bool b;
    float f;
    double d;
    long long ll;
    PROBE_ID id;
    PROBE_MODE mode;
    char text[17];
    unsigned char bytes[193];
    dev_ulong ids[4];
    PROBE_INNER inner;
    PROBE_INNER inners[3];
    char wide[400];
    std::string name;
};

// Arrays as a module without Java arrays exposes them: by the address of their first element.
struct PROBE_PLAIN {
    unsigned char data[6];
    dev_ulong values[3];
    PROBE_INNER items[2];
    PROBE_INNER single;
};

extern int probe_counter;
constexpr int PROBE_LIMIT = 4096;
extern const char* const PROBE_NAME;

namespace orvane {

class probe_subject {
public:
    probe_subject();
    explicit probe_subject(int start);
    virtual ~probe_subject();

    int twice(int v);
    dev_ulong low_bits(dev_ulong v);
    dev_long as_long(dev_long v);
    unsigned char next_byte(unsigned char v);
    bool flip(bool v);
    PROBE_MODE next_mode(PROBE_MODE m);
    const char* echo_cstr(const char* s);
    std::string join(std::string a, const std::string& b);
    PROBE_RECORD make_record(int i);
    PROBE_INNER* inner_of(PROBE_RECORD* r);
    int read_ref(PROBE_RECORD& r);
    int read_const_ref(const PROBE_RECORD& r);
    int read_value(PROBE_INNER r);
    int read_mode_ref(PROBE_MODE& m);
    void outputs(dev_ulong* count, int& value, bool* flag);
    int text_holder(std::string& text);
    int sum_bytes(signed char data[], int count);
    dev_ulong sum_ulongs(dev_ulong values[]);
    jobject pass(jobject o);
    int overloaded(int a);
    int overloaded(const char* s);
    int overloaded(int a, int b);
    int after_checks(PROBE_RECORD& r, const std::string& s, int* out);
    int fill_vector(std::vector<unsigned int>& ids, int count);

    static int reached();
    static std::string last_call;

    int start;

private:
    static void log(const std::string& call);
};

}  // namespace orvane

#endif  // JBRG_TESTS_WRAPPER_PROBE_H
