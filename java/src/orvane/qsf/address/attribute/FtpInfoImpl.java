package orvane.qsf.address.attribute;

/** An FTP server's folder. Its fields are filled by the native address book module. */
public class FtpInfoImpl {
    private String host;
    private String path;
    private int port;
    private String loginName;
    private String password;

    public FtpInfoImpl() {}

    public String getHost() {
        return host;
    }

    public String getPath() {
        return path;
    }

    public int getPort() {
        return port;
    }

    public String getLoginName() {
        return loginName;
    }

    public String getPassword() {
        return password;
    }

    @Override
    public String toString() {
        return host + "|" + path + "|" + port + "|" + loginName + "|" + password;
    }
}
