package orvane.qsf.address.attribute;

/** A folder on a server: an FTP server's or an SMB share's. Its fields are filled by the native address book module. */
public abstract class FolderInfoImpl {
    private String host;
    private String path;
    private int port;
    private String loginName;
    private String password;

    protected FolderInfoImpl() {}

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
