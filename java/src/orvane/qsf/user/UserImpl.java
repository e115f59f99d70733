package orvane.qsf.user;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;

import orvane.account.attribute.AccountID;
import orvane.user.attribute.AccessLevel;
import orvane.user.attribute.LoginName;
import orvane.user.attribute.MailAddress;
import orvane.user.attribute.UserAttribute;
import orvane.user.attribute.UserName;

/** A device user, built attribute by attribute by the native library. */
public class UserImpl {
    private final List<UserAttribute> given = new ArrayList<>();
    private LoginName loginName;
    private UserName userName;
    private MailAddress mailAddress;
    private AccessLevel accessLevel;
    private AccountID accountId;

    public UserImpl() {}

    /**
     * Sets one attribute; an attribute of a kind already set replaces it. A null attribute is kept in the
     * order of attributes given and sets nothing else (a user whose rights have no access level).
     */
    public void setAttribute(UserAttribute attribute) {
        given.add(attribute);
        if (attribute instanceof LoginName) {
            loginName = (LoginName) attribute;
        } else if (attribute instanceof UserName) {
            userName = (UserName) attribute;
        } else if (attribute instanceof MailAddress) {
            mailAddress = (MailAddress) attribute;
        } else if (attribute instanceof AccessLevel) {
            accessLevel = (AccessLevel) attribute;
        } else if (attribute instanceof AccountID) {
            accountId = (AccountID) attribute;
        }
    }

    /** Every attribute given, in order, nulls included. */
    public List<UserAttribute> getAttributes() {
        return Collections.unmodifiableList(given);
    }

    public LoginName getLoginName() {
        return loginName;
    }

    public UserName getUserName() {
        return userName;
    }

    public MailAddress getMailAddress() {
        return mailAddress;
    }

    public AccessLevel getAccessLevel() {
        return accessLevel;
    }

    public AccountID getAccountID() {
        return accountId;
    }
}
