Trio Link : TRUE
Poll Log : FALSE
