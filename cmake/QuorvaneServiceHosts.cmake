# Where the development and production services live is configuration of the build: whoever ships an application
# names the hosts. The defaults end in ".invalid", a name that never resolves, so that nothing is sent anywhere by
# accident. The local environment is fixed: ports 3000 and 4001 of this machine.
set(QUORVANE_API_HOST "api.quorvane.invalid" CACHE STRING
    "Host of the data service (paths /v2-dev and /v2)")
set(QUORVANE_AUTH_DEVELOPMENT_HOST "auth-dev.quorvane.invalid" CACHE STRING
    "Host of the development identity service")
set(QUORVANE_AUTH_PRODUCTION_HOST "auth.quorvane.invalid" CACHE STRING
    "Host of the production identity service")
